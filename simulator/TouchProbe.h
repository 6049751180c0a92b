#pragma once

#include <CoreGraphics/CGGeometry.h>

#include <string>

class UIView;

namespace sim {

// What a finger at a screen point would reach, looked at before the touch so
// that --trace and the "nothing took the touch" warning can say it: the
// front-most view under the point (hit-testing as the touch does), and the
// first view from there up through its ancestors that can take a touch (one
// with a gesture recogniser, or an enabled control).
struct TouchProbe {
    UIView* hit { nullptr };
    UIView* taker { nullptr };
    // The taker's recognisers and actions: "tap: timeContainerSingleTapRecognizer:".
    std::string how;

    static TouchProbe at(CGPoint);
    bool wasTaken() const { return taker; }
    // "KVView/_timeContainerView (tap: timeContainerSingleTapRecognizer:)" or
    // "nothing took the touch".
    std::string description() const;
};

}
