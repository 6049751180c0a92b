#pragma once

#include "Runtime.h"

#include <string>
#include <type_traits>

namespace objc {

// Messages are sent with their real C++ types. To let a caller that knows a
// class only by name talk to it, object types are canonicalised: any
// NSObject-derived pointer travels as `id` and any strong reference as
// `StrongId`; string literals travel as std::string.
template<typename T, typename = void>
struct Canonical {
    using type = T;
};
template<typename T>
struct Canonical<T*, std::enable_if_t<std::is_base_of_v<NSObject, T>>> {
    using type = NSObject*;
};
template<typename T>
struct Canonical<RefPtr<T>, std::enable_if_t<std::is_base_of_v<NSObject, T>>> {
    using type = StrongId;
};
template<>
struct Canonical<const char*> {
    using type = std::string;
};
template<>
struct Canonical<char*> {
    using type = std::string;
};

template<typename T>
using canonical_t = typename Canonical<std::remove_cv_t<std::decay_t<T>>>::type;

template<typename R, typename... Args>
using CanonicalIMP = canonical_t<R> (*)(NSObject*, SEL, canonical_t<Args>...);

// Turns a canonical value back into what the receiving C++ code declared.
template<typename To, typename = void>
struct FromCanonical {
    template<typename From>
    static To convert(From&& value) { return static_cast<To>(std::forward<From>(value)); }
};
template<typename T>
struct FromCanonical<T*, std::enable_if_t<std::is_base_of_v<NSObject, std::remove_cv_t<T>>>> {
    static T* convert(NSObject* value)
    {
        if constexpr (std::is_same_v<std::remove_cv_t<T>, NSObject>)
            return value;
        else
            return dynamic_cast<T*>(value);
    }
};
template<typename T>
struct FromCanonical<RefPtr<T>, std::enable_if_t<std::is_base_of_v<NSObject, T>>> {
    static RefPtr<T> convert(const StrongId& value)
    {
        if constexpr (std::is_same_v<T, NSObject>)
            return value;
        else
            return RefPtr<T>(dynamic_cast<T*>(value.get()));
    }
};

template<typename To, typename From>
decltype(auto) fromCanonical(From&& value)
{
    using Target = std::remove_cv_t<std::remove_reference_t<To>>;
    if constexpr (std::is_same_v<Target, std::remove_cvref_t<From>>)
        return std::forward<From>(value);
    else
        return FromCanonical<Target>::convert(std::forward<From>(value));
}

// Looks the implementation up and checks it was registered with exactly this
// canonical signature. Null receivers never get here.
template<typename Fn>
Fn lookupImplementation(NSObject* receiver, SEL sel)
{
    const Method* method = receiver->isa()->lookupMethod(sel);
    if (!method)
        return nullptr;
    if (method->signature && *method->signature != typeid(Fn))
        signatureMismatch(receiver, sel, *method->signature, typeid(Fn));
    return reinterpret_cast<Fn>(method->imp);
}

// Sends a message, as objc_msgSend does: a null receiver does nothing and
// answers zero (or null, or an empty value); an unrecognised selector is
// reported through the runtime and answers the same.
template<typename R = void, typename... Args>
R send(NSObject* receiver, SEL sel, Args&&... args)
{
    using Fn = CanonicalIMP<R, Args...>;
    if (!receiver) {
        if constexpr (!std::is_void_v<R>)
            return R {};
        else
            return;
    }
    Fn imp = lookupImplementation<Fn>(receiver, sel);
    if (!imp) {
        unrecognizedSelector(receiver, sel);
        if constexpr (!std::is_void_v<R>)
            return R {};
        else
            return;
    }
    if constexpr (std::is_void_v<R>)
        imp(receiver, sel, canonical_t<Args>(std::forward<Args>(args))...);
    else
        return fromCanonical<R>(imp(receiver, sel, canonical_t<Args>(std::forward<Args>(args))...));
}

template<typename R = void, typename... Args>
R send(const StrongId& receiver, SEL sel, Args&&... args)
{
    return send<R>(receiver.get(), sel, std::forward<Args>(args)...);
}

template<typename R = void, typename T, typename... Args>
R send(const RefPtr<T>& receiver, SEL sel, Args&&... args)
{
    return send<R>(static_cast<NSObject*>(receiver.get()), sel, std::forward<Args>(args)...);
}

// The same, naming the selector by string (interned on each call; hot paths
// use OBJC_SEL).
template<typename R = void, typename Receiver, typename... Args>
R send(Receiver&& receiver, const char* selector, Args&&... args)
{
    return send<R>(std::forward<Receiver>(receiver), sel_registerName(selector), std::forward<Args>(args)...);
}

// Sends to the implementation an overriding method replaced: `original` as
// MSHookMessageEx handed it back. A null original does nothing.
template<typename R = void, typename... Args>
R callOriginal(IMP original, NSObject* receiver, SEL sel, Args&&... args)
{
    using Fn = CanonicalIMP<R, Args...>;
    if (!original) {
        if constexpr (!std::is_void_v<R>)
            return R {};
        else
            return;
    }
    auto imp = reinterpret_cast<Fn>(original);
    if constexpr (std::is_void_v<R>)
        imp(receiver, sel, canonical_t<Args>(std::forward<Args>(args))...);
    else
        return fromCanonical<R>(imp(receiver, sel, canonical_t<Args>(std::forward<Args>(args))...));
}

// `[[NSClassFromString(name) alloc] init...]`: allocation by class.
inline StrongId alloc(Class* cls) { return cls ? cls->alloc() : nullptr; }

} // namespace objc

// Hooks a method with a replacement written with its canonical types,
// `R replacement(id self, SEL _cmd, Args...)`, keeping the original in a slot
// of type IMP.
template<typename R, typename... Args>
void MSHookMessageEx(objc::Class* cls, objc::SEL sel, R (*replacement)(NSObject*, objc::SEL, Args...), objc::IMP* original)
{
    using Fn = R (*)(NSObject*, objc::SEL, Args...);
    static_assert(std::is_same_v<Fn, objc::CanonicalIMP<R, Args...>>, "hook replacements take canonical types (id, StrongId, std::string, values)");
    objc::MSHookMessageEx(cls, sel, reinterpret_cast<objc::IMP>(replacement), original, typeid(Fn));
}
