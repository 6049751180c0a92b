#pragma once

#include "NSObject.h"

#include <functional>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <vector>

namespace objc {

// A method implementation is stored type-erased; its real signature is kept
// beside it so that a message sent with the wrong argument types is caught
// instead of calling through a mismatched function pointer.
using IMP = void (*)();

struct Method {
    IMP imp { nullptr };
    const std::type_info* signature { nullptr };
};

// An instance variable as the runtime sees it: a name, and a way to read (and
// write) the object it holds. Only object-valued variables are described.
struct Ivar {
    std::string name;
    std::function<StrongId(NSObject*)> get;
    std::function<void(NSObject*, StrongId)> set;
};

// A runtime class: a name, a superclass, its methods and instance variables,
// and a metaclass holding the class methods. Class objects are objects too, so
// messages to a class are dispatched through its metaclass.
class Class final : public NSObject {
public:
    Class(std::string name, Class* superclass, Class* metaclass, bool isMeta);

    const std::string& name() const { return m_name; }
    Class* superclass() const { return m_superclass; }
    Class* metaclass() const { return m_metaclass; }
    bool isMetaclass() const { return m_isMeta; }
    bool isSubclassOf(const Class*) const;
    // Only for building the root class, whose metaclass inherits from it.
    void setSuperclass(Class* superclass) { m_superclass = superclass; }

    objc::Class* isa() const override;
    std::string description() const override { return m_name; }

    // Looks the selector up here and in the superclasses.
    const Method* lookupMethod(SEL) const;
    // Only this class's own table, not the superclasses'.
    Method* ownMethod(SEL);
    void setMethod(SEL, Method);
    std::vector<SEL> ownSelectors() const;

    const Ivar* lookupIvar(const std::string& name) const;
    void addIvar(Ivar);
    void removeIvar(const std::string& name);

    // `alloc`: a fresh, uninitialised instance (the C++ default constructor).
    void setAllocator(std::function<StrongId()>);
    StrongId alloc() const;

private:
    std::string m_name;
    Class* m_superclass;
    Class* m_metaclass;
    bool m_isMeta;
    std::unordered_map<SEL, Method> m_methods;
    std::unordered_map<std::string, Ivar> m_ivars;
    std::function<StrongId()> m_allocator;
};

} // namespace objc
