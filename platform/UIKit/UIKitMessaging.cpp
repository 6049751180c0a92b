#include "UIKitMessaging.h"

#include <algorithm>
#include <string>

namespace UIKitMessaging {

Lookup lookUp(NSObject* receiver, objc::SEL sel, const std::type_info& signature)
{
    if (!receiver)
        return Lookup::Missing;
    const objc::Method* method = receiver->isa()->lookupMethod(sel);
    if (!method)
        return Lookup::Missing;
    if (method->signature && *method->signature != signature) {
        objc::Runtime::shared().log(std::string("UIKit: -[") + receiver->className() + " " + objc::sel_getName(sel)
            + "] is declared with other types than UIKit sends; not sent");
        return Lookup::Mismatch;
    }
    return Lookup::Matches;
}

void sendAction(NSObject* target, objc::SEL action, NSObject* sender)
{
    if (!target || !action)
        return;
    RefPtr<NSObject> protect(target);
    auto colons = std::count(action->name.begin(), action->name.end(), ':');
    auto send = [&](const std::type_info& signature, auto&&... args) {
        switch (lookUp(target, action, signature)) {
        case Lookup::Missing:
            objc::unrecognizedSelector(target, action);
            break;
        case Lookup::Matches:
            objc::send(target, action, args...);
            break;
        case Lookup::Mismatch:
            break;
        }
    };
    NSObject* noEvent = nullptr;
    if (colons == 0)
        send(typeid(objc::CanonicalIMP<void>));
    else if (colons == 1)
        send(typeid(objc::CanonicalIMP<void, NSObject*>), sender);
    else
        send(typeid(objc::CanonicalIMP<void, NSObject*, NSObject*>), sender, noEvent);
}

} // namespace UIKitMessaging
