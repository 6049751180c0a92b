#pragma once

#include "RefPtr.h"
#include "Selector.h"

#include <string>

namespace objc {
class Class;
}

// The root class. Every object the runtime can message derives from it: it is
// reference counted (single-threaded, like everything on the host's main
// thread) and knows its runtime class, through which messages are dispatched.
class NSObject {
public:
    NSObject();
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject();

    void ref() const { ++m_refCount; }
    void deref() const
    {
        if (--m_refCount == 0)
            delete this;
    }
    int retainCount() const { return m_refCount; }

    static objc::Class* classObject();
    virtual objc::Class* isa() const;

    const char* className() const;
    bool isKindOfClass(const objc::Class*) const;
    bool isMemberOfClass(const objc::Class*) const;
    bool respondsToSelector(objc::SEL) const;

    // What `%@` prints for this object.
    virtual std::string description() const;

    // How many objects are alive now; long runs watch it to see that
    // nothing accumulates.
    static long liveObjectCount();

private:
    mutable int m_refCount { 1 };
};

using id = NSObject*;
using StrongId = RefPtr<NSObject>;

namespace objc {

// A checked down-cast, the counterpart of `[x isKindOfClass:[T class]] ? x : nil`.
template<typename T>
T* cast(NSObject* object) { return dynamic_cast<T*>(object); }
template<typename T>
T* cast(const RefPtr<NSObject>& object) { return dynamic_cast<T*>(object.get()); }
template<typename T, typename U>
RefPtr<T> castRef(const RefPtr<U>& object) { return RefPtr<T>(dynamic_cast<T*>(object.get())); }

} // namespace objc
