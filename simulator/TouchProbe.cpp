#include "TouchProbe.h"

#include "ViewTree.h"

#include <UIKit/UIApplication.h>
#include <UIKit/UIControl.h>
#include <UIKit/UIView.h>

namespace sim {

static std::string actionNames(const std::vector<objc::SEL>& actions)
{
    std::string text;
    for (objc::SEL action : actions)
        text += std::string(text.empty() ? "" : " ") + objc::sel_getName(action);
    return text;
}

// "tap: a:, longpress: b:" for the view's recognisers, "control: c:" for a control.
static std::string howViewTakesTouches(const UIView& view)
{
    std::string how;
    auto add = [&](const std::string& kind, const std::string& actions) {
        how += (how.empty() ? "" : ", ") + kind + (actions.empty() ? "" : ": " + actions);
    };
    if (auto* control = dynamic_cast<const UIControl*>(&view); control && control->isEnabled())
        add("control", actionNames(control->actions()));
    for (auto& recognizer : view.gestureRecognizers()) {
        if (!recognizer->isEnabled())
            continue;
        std::string kind = recognizer->kindName();
        // A recogniser a view makes for itself (a scroll view's pan) has no kind name.
        add(kind.empty() ? std::string(recognizer->className()) : kind, actionNames(recognizer->actions()));
    }
    return how;
}

TouchProbe TouchProbe::at(CGPoint point)
{
    TouchProbe probe;
    probe.hit = UIApplication::sharedApplication()->hitTest(point);
    for (UIView* view = probe.hit; view; view = view->superview()) {
        std::string how = howViewTakesTouches(*view);
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
