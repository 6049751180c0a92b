#pragma once

#include "scenario/Target.h"

#include <CoreGraphics/CGGeometry.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class UIView;

namespace sim {

// The screen's view trees, as the dump shows them and as targets find them.
class ViewTree {
public:
    // The windows on screen, back to front.
    static std::vector<UIView*> windows();
    // One node per view with its children, in the dump's form, each with the
    // target that reaches it.
    static nlohmann::json dumpView(const UIView&);
    static nlohmann::json dumpWindows();

    // The text that reaches each view of the windows as a target: `#name`
    // (with `@N` when an earlier view has the same name), or `Class@N` for a
    // view without a name. Parsed again, it finds the same view.
    static std::unordered_map<const UIView*, std::string> targetTexts();

    // Views matching a name or class target, in tree order (windows back to
    // front, each depth-first), hidden ones included.
    static std::vector<UIView*> matches(const Target&);
    // The view a target names (null when nothing matches).
    static UIView* find(const Target&);
    // Where a finger aimed at the target lands, in screen points.
    static std::optional<CGPoint> screenPoint(const Target&);

    // Whether the view can be seen: it and its ancestors are shown (not
    // hidden, alpha 0.01 or more) and its rectangle is at least partly on
    // the screen.
    static bool isOnScreen(const UIView&);
    // A target without `@N` whose first match is not on screen while a later
    // one is: the views it matched, for a warning ("" otherwise).
    static std::string ambiguity(const Target&);
    // "#x matched 2 views: #x at [0, 0, 10, 10] (not on screen), #x@1 at ..."
    static std::string describeMatches(const Target&);
};

}
