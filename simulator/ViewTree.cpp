#include "ViewTree.h"

#include "scenario/TreeFormat.h"

#include <UIKit/UIScreen.h>
#include <UIKit/UIView.h>
#include <UIKit/UIWindow.h>

namespace sim {

std::vector<UIView*> ViewTree::windows()
{
    std::vector<UIView*> result;
    for (UIWindow* window : UIWindow::visibleWindows())
        result.push_back(window);
    return result;
}

static nlohmann::json dumpNode(const UIView& view, const std::unordered_map<const UIView*, std::string>& targets)
{
    nlohmann::json node = nlohmann::json::object();
    view.dumpProperties(node);
    if (auto target = targets.find(&view); target != targets.end())
        node["target"] = target->second;
    auto children = nlohmann::json::array();
    for (auto& subview : view.subviews())
        children.push_back(dumpNode(*subview, targets));
    node["children"] = std::move(children);
    return node;
}

nlohmann::json ViewTree::dumpView(const UIView& view) { return dumpNode(view, targetTexts()); }

nlohmann::json ViewTree::dumpWindows()
{
    auto targets = targetTexts();
    auto list = nlohmann::json::array();
    for (UIView* window : windows())
        list.push_back(dumpNode(*window, targets));
    return list;
}

namespace {

// Counts, in tree order, the views each name and each class target has
// matched so far: a view's index is the count before it.
struct TargetCounter {
    std::unordered_map<std::string, int> names;
    std::unordered_map<const objc::Class*, int> classes;
    std::unordered_map<const UIView*, std::string> texts;

    void visit(const UIView& view)
    {
        const std::string& name = view.name();
        // A class target matches subclasses too, so the view counts for each class it is a kind of.
        int classIndex = classes[view.isa()];
        for (const objc::Class* cls = view.isa(); cls; cls = cls->superclass())
            ++classes[cls];
        if (name.empty()) {
            texts[&view] = std::string(view.className()) + "@" + std::to_string(classIndex);
        } else {
            int nameIndex = names[name]++;
            // A name holding '@' always gets its index, so that its own '@' is not read as one.
            bool indexed = nameIndex > 0 || name.find('@') != std::string::npos;
            texts[&view] = "#" + name + (indexed ? "@" + std::to_string(nameIndex) : "");
        }
        for (auto& subview : view.subviews())
            visit(*subview);
    }
};

}

std::unordered_map<const UIView*, std::string> ViewTree::targetTexts()
{
    TargetCounter counter;
    for (UIView* window : windows())
        counter.visit(*window);
    return std::move(counter.texts);
}

static bool matchesTarget(const UIView& view, const Target& target)
{
    if (target.kind == Target::Kind::Name)
        return view.name() == target.name;
    // A class target matches the class and its subclasses.
    objc::Class* cls = objc::Runtime::shared().classNamed(target.name);
    return cls && view.isKindOfClass(cls);
}

static void collect(UIView& view, const Target& target, std::vector<UIView*>& out)
{
    if (matchesTarget(view, target))
        out.push_back(&view);
    for (auto& subview : view.subviews())
        collect(*subview, target, out);
}

std::vector<UIView*> ViewTree::matches(const Target& target)
{
    std::vector<UIView*> found;
    if (target.kind == Target::Kind::Point)
        return found;
    for (UIView* window : windows())
        collect(*window, target, found);
    return found;
}

UIView* ViewTree::find(const Target& target)
{
    auto found = matches(target);
    size_t index = static_cast<size_t>(target.index.value_or(0));
    return index < found.size() ? found[index] : nullptr;
}

std::optional<CGPoint> ViewTree::screenPoint(const Target& target)
{
    if (target.kind == Target::Kind::Point)
        return CGPointMake(target.x, target.y);
    UIView* view = find(target);
    if (!view)
        return std::nullopt;
    CGRect frame = view->screenFrame();
    return CGPointMake(CGRectGetMidX(frame), CGRectGetMidY(frame));
}

bool ViewTree::isOnScreen(const UIView& view)
{
    for (const UIView* shown = &view; shown; shown = shown->superview()) {
        if (!TreeFormat::isShown(shown->isHidden(), shown->alpha()))
            return false;
    }
    CGRect frame = view.screenFrame();
    CGRect screen = UIScreen::mainScreen()->bounds();
    return TreeFormat::touchesScreen({ frame.origin.x, frame.origin.y, frame.size.width, frame.size.height }, screen.size.width, screen.size.height);
}

std::string ViewTree::describeMatches(const Target& target)
{
    auto found = matches(target);
    if (found.size() < 2)
        return {};
    auto texts = targetTexts();
    std::string text = target.toString() + " matched " + std::to_string(found.size()) + " views: ";
    constexpr size_t shown = 6;
    for (size_t i = 0; i < found.size() && i < shown; ++i) {
        CGRect frame = found[i]->screenFrame();
        text += (i ? ", " : "") + texts[found[i]] + " at " + TreeFormat::rectangle({ frame.origin.x, frame.origin.y, frame.size.width, frame.size.height })
            + (isOnScreen(*found[i]) ? "" : " (not on screen)");
    }
    if (found.size() > shown)
        text += ", ...";
    return text;
}

std::string ViewTree::ambiguity(const Target& target)
{
    if (target.kind == Target::Kind::Point || target.index)
        return {};
    auto found = matches(target);
    if (found.size() < 2 || isOnScreen(*found[0]))
        return {};
    for (size_t i = 1; i < found.size(); ++i) {
        if (isOnScreen(*found[i]))
            return describeMatches(target);
    }
    return {};
}

}
