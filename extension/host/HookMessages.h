#pragma once

#include "_KVContainerView/KVView.h"
#include "settings/KVSettings.h"

#include <objc/SharedInstance.h>

// What the hooks ask of the extension's own classes, always as messages: on
// the phone the hooks are Objective-C, so another extension's replacement of
// `KVSettings sharedInstance`, `KVView update` or any other of these sees
// every call the hooks make. A replacement that answers nothing makes the
// hooks behave as for a disabled extension, never crash.
namespace hookMessages {

inline KVSettings* settings() { return objc::sharedInstance<KVSettings>(); }
inline KVView* panel() { return objc::sharedInstance<KVView>(); }

inline void reloadSettings() { objc::send(settings(), OBJC_SEL("reload")); }
inline bool enabled() { return objc::send<bool>(settings(), OBJC_SEL("enabled")); }
inline int location() { return objc::send<int>(settings(), OBJC_SEL("location")); }
inline bool shouldShowStatusBar() { return objc::send<bool>(settings(), OBJC_SEL("shouldShowStatusBar")); }

// The panel's `update`, then its app launcher's.
inline void updatePanelAndLauncher(KVView* panel)
{
    objc::send(panel, OBJC_SEL("update"));
    objc::send(objc::send<NSObject*>(panel, OBJC_SEL("appLauncherView")), OBJC_SEL("update"));
}

inline bool closeOverlays(KVView* panel, bool byHomeButton)
{
    return objc::send<bool>(panel, OBJC_SEL("hideAnyShowingDisplayViewsBecauseHomeButtonPressed:"), byHomeButton);
}

} // namespace hookMessages
