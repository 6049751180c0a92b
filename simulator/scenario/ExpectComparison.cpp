#include "ExpectComparison.h"

#include "ScenarioValues.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace sim {

namespace {

constexpr double tolerance = 1e-6;

bool numbersMatch(const nlohmann::json& found, const nlohmann::json& expected)
{
    if (found.is_number_integer() && expected.is_number_integer()) {
        // Both whole (signed or not): compare exactly, as doubles would lose large values.
        bool foundNegative = !found.is_number_unsigned() && found.get<int64_t>() < 0;
        bool expectedNegative = !expected.is_number_unsigned() && expected.get<int64_t>() < 0;
        if (foundNegative || expectedNegative)
            return foundNegative && expectedNegative && found.get<int64_t>() == expected.get<int64_t>();
        return found.get<uint64_t>() == expected.get<uint64_t>();
    }
    double a = found.get<double>();
    double b = expected.get<double>();
    return std::fabs(a - b) <= tolerance * std::max({ 1.0, std::fabs(a), std::fabs(b) });
}

std::optional<std::string> mismatchAt(const nlohmann::json& found, const nlohmann::json& expected, const std::string& where)
{
    auto difference = [&](std::string what) -> std::optional<std::string> {
        return where.empty() ? what : "at " + where + ": " + what;
    };
    auto plainDifference = [&] {
        return difference("expected " + describeJson(expected) + ", found " + describeJson(found));
    };

    if (expected.is_number() && found.is_number())
        return numbersMatch(found, expected) ? std::nullopt : plainDifference();
    if (expected.type() != found.type())
        return plainDifference();

    if (expected.is_array()) {
        if (expected.size() != found.size())
            return difference("expected " + std::to_string(expected.size()) + " elements, found " + std::to_string(found.size()) + " in " + describeJson(found));
        for (size_t i = 0; i < expected.size(); ++i) {
            if (auto inner = mismatchAt(found[i], expected[i], where + "[" + std::to_string(i) + "]"))
                return inner;
        }
        return std::nullopt;
    }
    if (expected.is_object()) {
        for (const auto& [key, value] : expected.items()) {
            std::string inner = where.empty() ? key : where + "." + key;
            auto member = found.find(key);
            if (member == found.end())
                return difference("expected a member \"" + key + "\", found none in " + describeJson(found));
            if (auto mismatch = mismatchAt(*member, value, inner))
                return mismatch;
        }
        for (const auto& [key, value] : found.items()) {
            if (!expected.contains(key))
                return difference("found a member \"" + key + "\" that is not expected");
        }
        return std::nullopt;
    }
    return found == expected ? std::nullopt : plainDifference();
}

}

bool jsonValuesMatch(const nlohmann::json& found, const nlohmann::json& expected)
{
    return !mismatchAt(found, expected, {});
}

std::optional<std::string> jsonMismatch(const nlohmann::json& found, const nlohmann::json& expected)
{
    return mismatchAt(found, expected, {});
}

const nlohmann::json* walkJsonPath(const nlohmann::json& root, std::span<const std::string> path)
{
    const nlohmann::json* node = &root;
    for (const std::string& component : path) {
        if (node->is_object()) {
            auto member = node->find(component);
            if (member == node->end())
                return nullptr;
            node = &*member;
        } else if (node->is_array()) {
            // Only plain decimal indices: "01" or "-1" name no element.
            std::optional<int64_t> index = parseInteger(component);
            if (!index || *index < 0 || static_cast<uint64_t>(*index) >= node->size() || std::to_string(*index) != component)
                return nullptr;
            node = &(*node)[static_cast<size_t>(*index)];
        } else {
            return nullptr;
        }
    }
    return node;
}

const nlohmann::json* walkHostPath(const nlohmann::json& dump, std::string_view hostPath)
{
    if (hostPath != "host" && !hostPath.starts_with("host."))
        return nullptr;
    std::vector<std::string> path;
    size_t start = 0;
    while (start <= hostPath.size()) {
        size_t dot = std::min(hostPath.find('.', start), hostPath.size());
        path.emplace_back(hostPath.substr(start, dot - start));
        start = dot + 1;
    }
    if (std::any_of(path.begin(), path.end(), [](const std::string& component) { return component.empty(); }))
        return nullptr;
    return walkJsonPath(dump, path);
}

std::string describeJson(const nlohmann::json& value)
{
    constexpr size_t limit = 200;
    std::string text = value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    if (text.size() > limit) {
        size_t cut = limit;
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xc0) == 0x80)
            --cut;
        text = text.substr(0, cut) + "...";
    }
    return text;
}

}
