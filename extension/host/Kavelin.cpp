// The first load-time initialiser: the lock screen on every system, and the
// notification centre and search page on iOS 9.x only.

#include "HookGroup.h"
#include "HostHooks.h"

__attribute__((constructor(201))) static void kavelinInitialise()
{
    installLockScreenHooks();
    if (!systemVersionAtLeast("9.0"))
        return;
    if (systemVersionAtLeast("10.0"))
        return;
    installNotificationCenterHooks();
    installSearchHooks();
}
