#include "TouchProbe.h"

#include "ViewTree.h"

#include <UIKit/UIApplication.h>
#include <UIKit/UIControl.h>
#include <UIKit/UIPanGestureRecognizer.h>
#include <UIKit/UITableViewCell.h>
#include <UIKit/UIView.h>

namespace sim {

static std::string actionNames(const std::vector<objc::SEL>& actions)
{
    std::string text;
    for (objc::SEL action : actions)
        text += std::string(text.empty() ? "" : " ") + objc::sel_getName(action);
    return text;
}

static bool takes(const UIGestureRecognizer& recognizer, TouchProbe::Gesture gesture)
{
    std::string kind = recognizer.kindName();
    switch (gesture) {
    case TouchProbe::Gesture::Tap:
        return kind.starts_with("tap") || kind == "doubletap";
    case TouchProbe::Gesture::LongPress:
        return kind == "longpress";
    case TouchProbe::Gesture::Swipe:
        return kind.starts_with("swipe") || dynamic_cast<const UIPanGestureRecognizer*>(&recognizer);
    }
    return false;
}

// "tap: a:, longpress: b:" for the view's recognisers that take the gesture,
// "control: c:" for a control, "row" for a table's cell; empty when none.
static std::string howViewTakes(const UIView& view, TouchProbe::Gesture gesture)
{
    std::string how;
    auto add = [&](const std::string& kind, const std::string& actions) {
        how += (how.empty() ? "" : ", ") + kind + (actions.empty() ? "" : ": " + actions);
    };
    if (auto* control = dynamic_cast<const UIControl*>(&view); control && control->isEnabled())
        add("control", actionNames(control->actions()));
    if (auto* cell = dynamic_cast<const UITableViewCell*>(&view); cell && cell->tableIndexPath() && gesture == TouchProbe::Gesture::Tap)
        add("row", {});
    for (auto& recognizer : view.gestureRecognizers()) {
        if (!recognizer->isEnabled() || !takes(*recognizer, gesture))
            continue;
        std::string kind = recognizer->kindName();
        // A recogniser a view makes for itself (a scroll view's pan) has no kind name.
        add(kind.empty() ? std::string(recognizer->className()) : kind, actionNames(recognizer->actions()));
    }
    return how;
}

TouchProbe TouchProbe::at(CGPoint point, Gesture gesture)
{
    TouchProbe probe;
    probe.hit = UIApplication::sharedApplication()->hitTest(point);
    for (UIView* view = probe.hit; view; view = view->superview()) {
        std::string how = howViewTakes(*view, gesture);
        if (!how.empty()) {
            probe.taker = view;
            probe.how = how;
            break;
        }
    }
    return probe;
}

std::string TouchProbe::description() const
{
    if (!taker)
        return hit ? "nothing took the touch (it landed on " + std::string(hit->className()) + ")" : "nothing took the touch";
    std::string name = taker->name();
    if (name.empty())
        name = ViewTree::targetTexts()[taker];
    return std::string(taker->className()) + "/" + name + " (" + how + ")";
}

}
