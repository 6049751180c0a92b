#pragma once

#include <Foundation/Dispatch.h>
#include <objc/objc.h>

class CVContainerView;
class CVDisplayView;
class KVSettings;
class UIView;
class UIVisualEffectView;

// Restarts the lock screen's dim timer, as an overlay does when it appears
// and when it goes, if its module asks for it.
void resetLockScreenIdleTimer();

// The getter of a module's "ResetLockScreenDim" setting, read each time an
// overlay has appeared or gone, so a reload takes effect at the next visit.
using KVDimSetting = bool (KVSettings::*)() const;

// Restarts the dim timer when the module's setting asks for it.
void resetLockScreenIdleTimerIfAsked(KVSettings*, KVDimSetting);

// The one instance of an overlay class, made on first use under a once-token
// and kept for the life of the process.
template<typename Overlay>
Overlay* sharedOverlayInstance()
{
    static dispatch_once_t onceToken;
    static Overlay* shared;
    dispatch_once(&onceToken, [] {
        if (!shared)
            shared = make<Overlay>().leakRef();
    });
    return shared;
}

// The first steps of every overlay built on CVDisplayView: it starts hidden,
// holds its content view, and sits in the host's root window (in nothing
// when the window was never captured: such an overlay is never seen).
void attachDisplayOverlay(CVDisplayView*, NSObject* rootWindow);

// Show: lay out for the current orientation (`updateFrame`, through the
// runtime), fade in, and once it is in, restart the dim timer if the module
// asks for it.
void showDisplayOverlay(CVDisplayView*, KVSettings*, KVDimSetting);
// Hide: fade out; once it is out, set the overlay hidden and restart the dim
// timer if the module asks for it.
void hideDisplayOverlay(CVDisplayView*, KVSettings*, KVDimSetting);

// The container overlays (clock, weather) share their steps around the
// base's fade. Show: the base's, then a tap outside the overlay's controls
// closes it.
void showContainerOverlay(CVContainerView*);
// After the base's viewWillShow: lay out for the current orientation
// (`updateFrame`, through the runtime), then restart the dim timer if the
// module asks for it. viewWillHide only restarts the timer, under the same
// setting.
void containerOverlayWillShow(CVContainerView*, KVSettings*, KVDimSetting);

// The part of `updateFrame` every display overlay shares: the overlay, its
// content view and the blur behind its controls fill the screen in the
// current orientation.
void layOutDisplayOverlay(CVDisplayView*, UIView* blur);

// Masks an app's icon as the home screen does: corners rounded by 0.2237
// of the side (call once the view has its size).
void maskAsAppIcon(UIView* icon);

// The dark blur that fills an overlay's content view, under its controls.
RefPtr<UIVisualEffectView> addDarkBlur(UIView* container);

// Each overlay unit keeps the host's root window, captured by its own hook
// on FBRootWindow's initWithDisplay:. A missing FBRootWindow class is logged
// under the unit's source path and line, and leaves the slot empty.
void installRootWindowCapture(const char* sourceUnit, int line, objc::IMP* original, StrongId* slot,
    StrongId (*replacement)(NSObject*, objc::SEL, NSObject*));

// Declares a unit's root-window slot and its capture hook.
#define KV_ROOT_WINDOW_CAPTURE(unitPath, line)                                                                       \
    namespace {                                                                                                      \
    objc::IMP s_rootWindowInitWithDisplay;                                                                           \
    StrongId s_rootWindow;                                                                                           \
    StrongId rootWindowInitWithDisplay(NSObject* self, objc::SEL cmd, NSObject* display)                             \
    {                                                                                                                \
        StrongId window = objc::callOriginal<StrongId>(s_rootWindowInitWithDisplay, self, cmd, display);             \
        s_rootWindow = window;                                                                                       \
        return window;                                                                                               \
    }                                                                                                                \
    __attribute__((constructor(203))) void installRootWindowCaptureForUnit()                                         \
    {                                                                                                                \
        installRootWindowCapture(unitPath, line, &s_rootWindowInitWithDisplay, &s_rootWindow, &rootWindowInitWithDisplay); \
    }                                                                                                                \
    }
