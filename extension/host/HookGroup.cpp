#include "HookGroup.h"

#include <Foundation/CFLog.h>
#include <Foundation/NSString.h>
#include <UIKit/UIDevice.h>

void installHookGroup(const char* sourceUnit, int line, std::initializer_list<HookedClass> classes)
{
    for (const HookedClass& hooked : classes) {
        objc::Class* cls = objc::objc_getClass(hooked.className);
        for (const HookEntry& entry : hooked.entries) {
            if (!cls) {
                auto message = NSString::stringWithFormat("logos: nil class %s", hooked.className);
                CFLog(3, "[%s: %s:%d] %s: %@", "Kavelin", sourceUnit, line, "ERROR", message.get());
                continue;
            }
            objc::Class* target = entry.isClassMethod ? cls->metaclass() : cls;
            objc::MSHookMessageEx(target, objc::sel_registerName(entry.selector), entry.replacement, entry.original, *entry.signature);
        }
    }
}

int compareVersionStrings(const std::string& a, const std::string& b)
{
    // Numeric search: runs of digits compare by value, anything else by
    // character.
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (isdigit(static_cast<unsigned char>(a[i])) && isdigit(static_cast<unsigned char>(b[j]))) {
            size_t ei = i, ej = j;
            while (ei < a.size() && a[ei] == '0')
                ++ei;
            while (ej < b.size() && b[ej] == '0')
                ++ej;
            size_t si = ei, sj = ej;
            while (ei < a.size() && isdigit(static_cast<unsigned char>(a[ei])))
                ++ei;
            while (ej < b.size() && isdigit(static_cast<unsigned char>(b[ej])))
                ++ej;
            size_t li = ei - si, lj = ej - sj;
            if (li != lj)
                return li < lj ? -1 : 1;
            int c = a.compare(si, li, b, sj, lj);
            if (c)
                return c < 0 ? -1 : 1;
            i = ei;
            j = ej;
            continue;
        }
        if (a[i] != b[j])
            return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]) ? -1 : 1;
        ++i, ++j;
    }
    if (i < a.size())
        return 1;
    if (j < b.size())
        return -1;
    return 0;
}

bool systemVersionAtLeast(const char* version)
{
    return compareVersionStrings(UIDevice::currentDevice()->systemVersion(), version) >= 0;
}
