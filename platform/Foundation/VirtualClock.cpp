#include "VirtualClock.h"

VirtualClock& VirtualClock::shared()
{
    static auto* clock = new VirtualClock();
    return *clock;
}
