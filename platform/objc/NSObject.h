#pragma once

#include "RefPtr.h"
#include "Selector.h"

#include <string>

class NSObject;

namespace objc {
class Class;

// The block a weak reference holds instead of its object: the object keeps
// one reference to it and forgets it (get() becomes null) as it goes away;
// the weak references keep the others, so the block outlives the object.
class WeakReference {
public:
    explicit WeakReference(NSObject* object)
        : m_object(object)
    {
    }
    WeakReference(const WeakReference&) = delete;
    WeakReference& operator=(const WeakReference&) = delete;

    void ref() { ++m_refCount; }
    void deref()
    {
        if (--m_refCount == 0)
            delete this;
    }
    NSObject* get() const { return m_object; }
    void clear() { m_object = nullptr; }

private:
    NSObject* m_object;
    int m_refCount { 1 };
};
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
            destroy();
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

    // The block weak references to this object share (see WeakPtr).
    objc::WeakReference& weakReference() const;

private:
    void destroy() const;
    void clearWeakReference() const;

    mutable int m_refCount { 1 };
    mutable objc::WeakReference* m_weakReference { nullptr };
};

// A reference that does not keep its object alive and reads null once the
// object is gone, like Objective-C's __weak.
template<typename T>
class WeakPtr {
public:
    WeakPtr() = default;
    WeakPtr(T* object)
        : m_reference(object ? &object->weakReference() : nullptr)
    {
    }

    T* get() const { return m_reference ? static_cast<T*>(m_reference->get()) : nullptr; }
    explicit operator bool() const { return get(); }

private:
    RefPtr<objc::WeakReference> m_reference;
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
