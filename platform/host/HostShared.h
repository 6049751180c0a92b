#pragma once

#include <objc/objc.h>

#include <functional>

namespace host {

// The host's process-wide objects (the backlight controller, the timer
// manager, ...) are made on first use, as `sharedInstance` makes them on the
// phone. A new SimulatedHost forgets them all, so that every host starts
// from a fresh world even when several are made in one process (tests).
void forgetSharedInstances();
void onForgetSharedInstances(std::function<void()>);

// The one instance kept in `slot`, made on first use. Slots are allocated
// once and never destroyed, so that nothing runs at process exit:
//   static auto* slot = new RefPtr<Name>(); return host::sharedInstanceIn(*slot);
template<typename T>
RefPtr<T> sharedInstanceIn(RefPtr<T>& slot)
{
    if (!slot) {
        slot = make<T>();
        onForgetSharedInstances([&slot] { slot = nullptr; });
    }
    return slot;
}

} // namespace host
