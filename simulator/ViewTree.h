#pragma once

#include "scenario/Target.h"

#include <CoreGraphics/CGGeometry.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <vector>

class UIView;

namespace sim {

// The screen's view trees, as the dump shows them and as targets find them.
class ViewTree {
public:
    // The windows on screen, back to front.
    static std::vector<UIView*> windows();
    // One node per view with its children, in the dump's form.
    static nlohmann::json dumpView(const UIView&);
    static nlohmann::json dumpWindows();

    // Views matching a name or class target, in tree order (windows back to
    // front, each depth-first), hidden ones included.
    static std::vector<UIView*> matches(const Target&);
    // The view a target names (null when nothing matches).
    static UIView* find(const Target&);
    // Where a finger aimed at the target lands, in screen points.
    static std::optional<CGPoint> screenPoint(const Target&);
};

}
