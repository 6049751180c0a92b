#include "TreeFormat.h"

#include "ScenarioValues.h"

#include <optional>

namespace sim {

namespace {

std::optional<TreeFormat::Rect> rectOf(const nlohmann::json& node)
{
    auto found = node.find("screen");
    if (found == node.end() || !found->is_array() || found->size() != 4)
        return std::nullopt;
    TreeFormat::Rect rect {};
    for (size_t i = 0; i < 4; ++i) {
        if (!(*found)[i].is_number())
            return std::nullopt;
        rect[i] = (*found)[i].get<double>();
    }
    return rect;
}

// A label's text on one line, cut short: the tree is for finding views.
std::string quotedText(const std::string& text)
{
    constexpr size_t longest = 60;
    std::string shown = text;
    if (shown.size() > longest) {
        size_t cut = longest;
        while (cut > 0 && (static_cast<unsigned char>(shown[cut]) & 0xC0) == 0x80)
            --cut;
        shown = shown.substr(0, cut) + "...";
    }
    return nlohmann::json(shown).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}

bool TreeFormat::touchesScreen(const Rect& rect, double screenWidth, double screenHeight)
{
    auto [x, y, width, height] = rect;
    return x < screenWidth && y < screenHeight && x + width >= 0 && y + height >= 0 && (x + width > 0 || width == 0)
        && (y + height > 0 || height == 0);
}

std::string TreeFormat::rectangle(const Rect& rect)
{
    return "[" + formatDecimal(rect[0]) + ", " + formatDecimal(rect[1]) + ", " + formatDecimal(rect[2]) + ", " + formatDecimal(rect[3]) + "]";
}

std::string TreeFormat::line(const nlohmann::json& node, int depth)
{
    std::string text(static_cast<size_t>(depth) * 2, ' ');
    text += node.value("target", std::string("?"));
    text += "  " + node.value("class", std::string("?"));
    if (auto rect = rectOf(node))
        text += "  " + rectangle(*rect);
    if (auto label = node.find("text"); label != node.end() && label->is_string())
        text += "  " + quotedText(label->get<std::string>());
    if (auto gestures = node.find("gestures"); gestures != node.end() && gestures->is_array() && !gestures->empty()) {
        text += "  gestures:";
        for (size_t i = 0; i < gestures->size(); ++i)
            text += (i ? ", " : " ") + ((*gestures)[i].is_string() ? (*gestures)[i].get<std::string>() : std::string("?"));
    }
    return text;
}

void TreeFormat::append(std::string& out, const nlohmann::json& node, int depth, double screenWidth, double screenHeight, bool all)
{
    if (!node.is_object())
        return;
    if (!all) {
        auto rect = rectOf(node);
        if (!isShown(node.value("hidden", false), node.value("alpha", 1.0)) || (rect && !touchesScreen(*rect, screenWidth, screenHeight)))
            return;
    }
    out += line(node, depth) + "\n";
    if (auto children = node.find("children"); children != node.end() && children->is_array()) {
        for (const auto& child : *children)
            append(out, child, depth + 1, screenWidth, screenHeight, all);
    }
}

std::string TreeFormat::tree(const nlohmann::json& nodes, double screenWidth, double screenHeight, bool all)
{
    std::string out;
    if (nodes.is_array()) {
        for (const auto& node : nodes)
            append(out, node, 0, screenWidth, screenHeight, all);
    } else {
        append(out, nodes, 0, screenWidth, screenHeight, all);
    }
    return out;
}

}
