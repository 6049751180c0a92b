#pragma once

#include <UIKit/UIWindow.h>

// The window at the back of everything SpringBoard shows: the wallpaper, the
// lock screen and the home screen live in it. Made for a display (the main
// screen) with `initWithDisplay:`, sent through the runtime.
class FBRootWindow final : public UIWindow {
    OBJC_CLASS(FBRootWindow)
public:
    FBRootWindow() = default;
    StrongId initWithDisplay(NSObject* display);
};
