#pragma once

#include <objc/objc.h>

// Restarts the lock screen's dim timer, as an overlay does when it appears
// and when it goes, if its module asks for it.
void resetLockScreenIdleTimer();

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
