#include "Runtime.h"

#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace objc {

Runtime& Runtime::shared()
{
    // Built on first use and never destroyed: classes outlive every object.
    static auto* runtime = new Runtime();
    return *runtime;
}

void Runtime::registerClass(Class* cls)
{
    if (m_classes.emplace(cls->name(), cls).second)
        m_order.push_back(cls);
}

Class* Runtime::classNamed(std::string_view name) const
{
    auto it = m_classes.find(std::string(name));
    return it == m_classes.end() ? nullptr : it->second;
}

std::vector<Class*> Runtime::allClasses() const { return m_order; }

void Runtime::hideIvar(std::string className, std::string ivarName)
{
    if (Class* cls = classNamed(className))
        cls->removeIvar(ivarName);
}

void Runtime::recordHook(const Class* cls, SEL sel) { m_installedHooks.emplace_back(cls->name(), sel_getName(sel)); }

void Runtime::log(const std::string& line) const
{
    if (m_logSink)
        m_logSink(line);
    else
        std::fprintf(stderr, "%s\n", line.c_str());
}

static int s_attemptDepth = 0;

detail::AttemptScope::AttemptScope() { ++s_attemptDepth; }
detail::AttemptScope::~AttemptScope() { --s_attemptDepth; }

bool insideAttempt() { return s_attemptDepth > 0; }

void raise(const std::string& reason)
{
    if (insideAttempt())
        throw Exception(reason);
    Runtime::shared().log("*** Uncaught exception (answered with zero): " + reason);
}

Class* objc_getClass(std::string_view name)
{
    auto& runtime = Runtime::shared();
    if (runtime.isClassHidden(name))
        return nullptr;
    return runtime.classNamed(name);
}

StrongId object_getIvar(NSObject* object, std::string_view name)
{
    if (!object)
        return nullptr;
    const Ivar* ivar = object->isa()->lookupIvar(std::string(name));
    if (!ivar || !ivar->get)
        return nullptr;
    return ivar->get(object);
}

bool object_setIvar(NSObject* object, std::string_view name, StrongId value)
{
    if (!object)
        return false;
    const Ivar* ivar = object->isa()->lookupIvar(std::string(name));
    if (!ivar || !ivar->set)
        return false;
    ivar->set(object, std::move(value));
    return true;
}

void unrecognizedSelector(NSObject* receiver, SEL sel)
{
    bool isClass = receiver->isa()->isMetaclass();
    std::string reason = std::string(isClass ? "+[" : "-[") + receiver->className() + " " + sel_getName(sel)
        + "]: unrecognized selector sent to " + (isClass ? "class" : "instance");
    raise(reason);
}

static std::string demangle(const std::type_info& type)
{
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return status == 0 && name ? name.get() : type.name();
}

void signatureMismatch(NSObject* receiver, SEL sel, const std::type_info& expected, const std::type_info& sent)
{
    std::fprintf(stderr, "objc: -[%s %s] implemented as %s but sent as %s\n", receiver->className(), sel_getName(sel),
        demangle(expected).c_str(), demangle(sent).c_str());
    std::abort();
}

void MSHookMessageEx(Class* cls, SEL sel, IMP replacement, IMP* original, const std::type_info& signature)
{
    if (!cls || !sel || !replacement)
        return;
    Runtime::shared().recordHook(cls, sel);
    if (Method* own = cls->ownMethod(sel)) {
        if (own->signature && *own->signature != signature)
            signatureMismatch(cls, sel, *own->signature, signature);
        if (original)
            *original = own->imp;
        own->imp = replacement;
        return;
    }
    const Method* inherited = cls->superclass() ? cls->superclass()->lookupMethod(sel) : nullptr;
    if (inherited && inherited->signature && *inherited->signature != signature)
        signatureMismatch(cls, sel, *inherited->signature, signature);
    if (original)
        *original = inherited ? inherited->imp : nullptr;
    cls->setMethod(sel, Method { replacement, &signature });
}

} // namespace objc

namespace objc {

Class* makeClass(const char* name, Class* superclass)
{
    auto* meta = new Class(name, superclass ? superclass->metaclass() : nullptr, nullptr, true);
    auto* cls = new Class(name, superclass, meta, false);
    Runtime::shared().registerClass(cls);
    return cls;
}

} // namespace objc
