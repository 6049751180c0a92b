#pragma once

// Messages UIKit sends to objects it does not know: actions of targets, and
// the optional methods of data sources and delegates. A method that is
// present but declared with other types than UIKit sends is reported through
// the runtime's log and skipped, instead of being called with the wrong
// arguments. (Private to UIKit.)

#include <objc/objc.h>

#include <optional>
#include <typeinfo>

namespace UIKitMessaging {

enum class Lookup { Missing, Matches, Mismatch };

Lookup lookUp(NSObject* receiver, objc::SEL, const std::type_info& signature);

// Sends `action` as UIKit does: with no argument, with the sender, or with
// the sender and the event (always null here), as the selector's colons say.
// A null target or action does nothing.
void sendAction(NSObject* target, objc::SEL action, NSObject* sender);

// An optional method answering a value: nothing when the receiver does not
// implement it with exactly these types.
template<typename R, typename... Args>
std::optional<R> ask(NSObject* receiver, objc::SEL sel, Args... args)
{
    if (!receiver || lookUp(receiver, sel, typeid(objc::CanonicalIMP<R, Args...>)) != Lookup::Matches)
        return std::nullopt;
    return objc::send<R>(receiver, sel, args...);
}

// An optional method answering nothing; says whether it was sent.
template<typename... Args>
bool tell(NSObject* receiver, objc::SEL sel, Args... args)
{
    if (!receiver || lookUp(receiver, sel, typeid(objc::CanonicalIMP<void, Args...>)) != Lookup::Matches)
        return false;
    objc::send(receiver, sel, args...);
    return true;
}

} // namespace UIKitMessaging
