#pragma once

#include <objc/objc.h>

// The maker library's device facts, read from the host's hardware registry
// by name: the model code (4 iPhone 4S, 5 iPhone 5, ... 8 iPhone 6, 9 iPhone
// 6 Plus, ... 30 iPod touch 6) and the screen-size class (1 for 3.5-inch, 2
// for 4-inch, 3 for 4.7-inch, 4 for 5.5-inch, 5 for iPads). 0 when the host
// does not say.
class CViOSVersion final : public NSObject {
    OBJC_CLASS(CViOSVersion)
public:
    static long long deviceVersion();
    static long long deviceSize();
};
