#include "ViewTree.h"

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

nlohmann::json ViewTree::dumpView(const UIView& view)
{
    nlohmann::json node = nlohmann::json::object();
    view.dumpProperties(node);
    auto children = nlohmann::json::array();
    for (auto& subview : view.subviews())
        children.push_back(dumpView(*subview));
    node["children"] = std::move(children);
    return node;
}

nlohmann::json ViewTree::dumpWindows()
{
    auto list = nlohmann::json::array();
    for (UIView* window : windows())
        list.push_back(dumpView(*window));
    return list;
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

}
