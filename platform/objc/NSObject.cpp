#include "NSObject.h"

#include "ClassBuilder.h"
#include "Runtime.h"

#include <atomic>
#include <cstdio>
#include <utility>

static std::atomic<long> s_liveObjectCount;

NSObject::NSObject() { s_liveObjectCount.fetch_add(1, std::memory_order_relaxed); }

NSObject::~NSObject()
{
    clearWeakReference();
    s_liveObjectCount.fetch_sub(1, std::memory_order_relaxed);
}

// Weak references go null before any destructor runs, so an object that is
// being torn down can no longer be reached (and messaged) through them.
void NSObject::destroy() const
{
    clearWeakReference();
    delete this;
}

void NSObject::clearWeakReference() const
{
    if (!m_weakReference)
        return;
    m_weakReference->clear();
    std::exchange(m_weakReference, nullptr)->deref();
}

objc::WeakReference& NSObject::weakReference() const
{
    if (!m_weakReference)
        m_weakReference = new objc::WeakReference(const_cast<NSObject*>(this));
    return *m_weakReference;
}

long NSObject::liveObjectCount() { return s_liveObjectCount.load(std::memory_order_relaxed); }

objc::Class* NSObject::classObject()
{
    static objc::Class* cls = [] {
        auto* meta = new objc::Class("NSObject", nullptr, nullptr, true);
        auto* cls = new objc::Class("NSObject", nullptr, meta, false);
        // As in Objective-C, the root metaclass inherits from the root class,
        // so class objects answer the root's instance methods too.
        meta->setSuperclass(cls);
        objc::Runtime::shared().registerClass(cls);
        objc::ClassBuilder<NSObject> builder(cls);
        builder.template method<&NSObject::description>("description");
        builder.template method<&NSObject::respondsToSelector>("respondsToSelector:");
        return cls;
    }();
    return cls;
}

objc::Class* NSObject::isa() const { return classObject(); }

const char* NSObject::className() const { return isa()->name().c_str(); }

bool NSObject::isKindOfClass(const objc::Class* cls) const { return cls && isa()->isSubclassOf(cls); }

bool NSObject::isMemberOfClass(const objc::Class* cls) const { return cls && isa() == cls; }

bool NSObject::respondsToSelector(objc::SEL sel) const { return isa()->lookupMethod(sel) != nullptr; }

std::string NSObject::description() const
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, ": %p>", static_cast<const void*>(this));
    return std::string("<") + className() + buffer;
}
