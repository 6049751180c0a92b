#include "KVOverlaySupport.h"

#include "host/HookGroup.h"

void resetLockScreenIdleTimer()
{
    // Looked up once: the class does not come and go.
    static objc::Class* backlightClass = objc::objc_getClass("SBBacklightController");
    StrongId controller = objc::send<StrongId>(backlightClass, OBJC_SEL("sharedInstance"));
    objc::send(controller, OBJC_SEL("resetLockScreenIdleTimer"));
}

void installRootWindowCapture(const char* sourceUnit, int line, objc::IMP* original, StrongId*,
    StrongId (*replacement)(NSObject*, objc::SEL, NSObject*))
{
    installHookGroup(sourceUnit, line, { { "FBRootWindow", { hook("initWithDisplay:", replacement, original) } } });
}
