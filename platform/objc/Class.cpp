#include "Class.h"

namespace objc {

Class::Class(std::string name, Class* superclass, Class* metaclass, bool isMeta)
    : m_name(std::move(name))
    , m_superclass(superclass)
    , m_metaclass(metaclass)
    , m_isMeta(isMeta)
{
}

objc::Class* Class::isa() const
{
    // A metaclass's own class is not modelled; answering itself keeps
    // messages to it well defined.
    return m_isMeta ? const_cast<Class*>(this) : m_metaclass;
}

bool Class::isSubclassOf(const Class* other) const
{
    for (const Class* cls = this; cls; cls = cls->m_superclass) {
        if (cls == other)
            return true;
    }
    return false;
}

const Method* Class::lookupMethod(SEL sel) const
{
    for (const Class* cls = this; cls; cls = cls->m_superclass) {
        auto it = cls->m_methods.find(sel);
        if (it != cls->m_methods.end())
            return &it->second;
    }
    return nullptr;
}

Method* Class::ownMethod(SEL sel)
{
    auto it = m_methods.find(sel);
    return it == m_methods.end() ? nullptr : &it->second;
}

void Class::setMethod(SEL sel, Method method) { m_methods[sel] = method; }

std::vector<SEL> Class::ownSelectors() const
{
    std::vector<SEL> result;
    result.reserve(m_methods.size());
    for (auto& [sel, method] : m_methods)
        result.push_back(sel);
    return result;
}

const Ivar* Class::lookupIvar(const std::string& name) const
{
    for (const Class* cls = this; cls; cls = cls->m_superclass) {
        auto it = cls->m_ivars.find(name);
        if (it != cls->m_ivars.end())
            return &it->second;
    }
    return nullptr;
}

void Class::addIvar(Ivar ivar)
{
    auto name = ivar.name;
    m_ivars[name] = std::move(ivar);
}

void Class::removeIvar(const std::string& name) { m_ivars.erase(name); }

void Class::setAllocator(std::function<StrongId()> allocator) { m_allocator = std::move(allocator); }

StrongId Class::alloc() const { return m_allocator ? m_allocator() : nullptr; }

} // namespace objc
