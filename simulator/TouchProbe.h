#pragma once

#include <CoreGraphics/CGGeometry.h>

#include <cstdint>
#include <string>

class UIView;

namespace sim {

// What a finger at a screen point would reach, looked at before the touch so
// that --trace and the "nothing took the touch" warning can say it: the
// front-most view under the point (hit-testing as the touch does), and the
// first view from there up through its ancestors that can take that kind of
// gesture: an enabled control, a table's cell for a tap, or an enabled
// recogniser of the gesture's kind (a tap recogniser for a tap, a swipe or a
// pan, such as a scroll view's, for a swipe).
struct TouchProbe {
    enum class Gesture : uint8_t { Tap, LongPress, Swipe };

    UIView* hit { nullptr };
    UIView* taker { nullptr };
    // The taker's recognisers and actions: "tap: timeContainerSingleTapRecognizer:".
    std::string how;

    static TouchProbe at(CGPoint, Gesture);
    bool wasTaken() const { return taker; }
    // "KVView/_timeContainerView (tap: timeContainerSingleTapRecognizer:)" or
    // "nothing took the touch".
    std::string description() const;
};

}
