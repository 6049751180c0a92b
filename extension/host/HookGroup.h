#pragma once

#include <objc/objc.h>

#include <initializer_list>
#include <typeinfo>

// One method replacement of a hook group: the selector, the replacement with
// its canonical signature, and the slot that receives the host's own
// implementation.
struct HookEntry {
    const char* selector;
    objc::IMP replacement;
    objc::IMP* original;
    const std::type_info* signature;
    bool isClassMethod { false };
};

template<typename R, typename... Args>
HookEntry hook(const char* selector, R (*replacement)(NSObject*, objc::SEL, Args...), objc::IMP* original)
{
    using Fn = R (*)(NSObject*, objc::SEL, Args...);
    static_assert(std::is_same_v<Fn, objc::CanonicalIMP<R, Args...>>, "replacements take canonical types");
    return { selector, reinterpret_cast<objc::IMP>(replacement), original, &typeid(Fn), false };
}

// The methods of one host class that a group replaces. When the class does
// not exist in the host, nothing is hooked and one error line per method is
// written to the host's log, naming the source unit and line of the group,
// as the hook generator's start-up code does.
struct HookedClass {
    const char* className;
    std::initializer_list<HookEntry> entries;
};

void installHookGroup(const char* sourceUnit, int line, std::initializer_list<HookedClass> classes);

// The host's system version against a version string, compared numerically
// component by component ("9.10" is above "9.9").
bool systemVersionAtLeast(const char* version);
int compareVersionStrings(const std::string& a, const std::string& b);
