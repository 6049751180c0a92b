#pragma once

#include "Message.h"

#include <type_traits>

namespace objc {

namespace detail {

template<typename T>
struct MemberTraits;
template<typename C, typename R, typename... A>
struct MemberTraits<R (C::*)(A...)> {
    using Return = R;
    using Owner = C;
    template<typename Self, auto M>
    static canonical_t<R> imp(NSObject* self, SEL, canonical_t<A>... args)
    {
        auto* object = static_cast<Self*>(self);
        if constexpr (std::is_void_v<R>)
            (object->*M)(fromCanonical<A>(std::move(args))...);
        else
            return canonical_t<R>((object->*M)(fromCanonical<A>(std::move(args))...));
    }
    using Signature = CanonicalIMP<R, A...>;
};
template<typename C, typename R, typename... A>
struct MemberTraits<R (C::*)(A...) const> : MemberTraits<R (C::*)(A...)> {
    template<typename Self, auto M>
    static canonical_t<R> imp(NSObject* self, SEL, canonical_t<A>... args)
    {
        auto* object = static_cast<const Self*>(self);
        if constexpr (std::is_void_v<R>)
            (object->*M)(fromCanonical<A>(std::move(args))...);
        else
            return canonical_t<R>((object->*M)(fromCanonical<A>(std::move(args))...));
    }
};

template<typename T>
struct FunctionTraits;
template<typename R, typename... A>
struct FunctionTraits<R (*)(A...)> {
    template<auto F>
    static canonical_t<R> imp(NSObject*, SEL, canonical_t<A>... args)
    {
        if constexpr (std::is_void_v<R>)
            F(fromCanonical<A>(std::move(args))...);
        else
            return canonical_t<R>(F(fromCanonical<A>(std::move(args))...));
    }
    using Signature = CanonicalIMP<R, A...>;
};

template<typename T>
struct IvarTraits;
template<typename C, typename V>
struct IvarTraits<V C::*> {
    using Value = V;
};

} // namespace detail

// Describes a C++ class to the runtime: which member functions answer which
// selectors, which members are instance variables visible by name, and how to
// allocate an instance. Used once per class, in its .cpp file.
template<typename T>
class ClassBuilder {
public:
    explicit ClassBuilder(Class* cls)
        : m_class(cls)
    {
    }

    Class* cls() const { return m_class; }

    template<auto M>
    ClassBuilder& method(std::string_view selector)
    {
        using Traits = detail::MemberTraits<decltype(M)>;
        auto imp = &Traits::template imp<T, M>;
        m_class->setMethod(sel_registerName(selector), Method { reinterpret_cast<IMP>(imp), &typeid(typename Traits::Signature) });
        return *this;
    }

    template<auto F>
    ClassBuilder& classMethod(std::string_view selector)
    {
        using Traits = detail::FunctionTraits<decltype(F)>;
        auto imp = &Traits::template imp<F>;
        m_class->metaclass()->setMethod(sel_registerName(selector), Method { reinterpret_cast<IMP>(imp), &typeid(typename Traits::Signature) });
        return *this;
    }

    // An object-valued member (RefPtr<U>) readable and writable by name.
    template<auto Member>
    ClassBuilder& ivar(std::string name)
    {
        using Value = typename detail::IvarTraits<decltype(Member)>::Value;
        Ivar ivar;
        ivar.name = name;
        ivar.get = [](NSObject* object) -> StrongId {
            auto* self = dynamic_cast<T*>(object);
            return self ? StrongId(self->*Member) : nullptr;
        };
        ivar.set = [](NSObject* object, StrongId value) {
            if (auto* self = dynamic_cast<T*>(object))
                self->*Member = FromCanonical<Value>::convert(value);
        };
        m_class->addIvar(std::move(ivar));
        return *this;
    }

    // `alloc` answers a default-constructed T.
    ClassBuilder& allocatable()
    {
        m_class->setAllocator([]() -> StrongId { return StrongId(adoptRef(static_cast<NSObject*>(new T()))); });
        m_class->metaclass()->setMethod(sel_registerName("alloc"),
            Method { reinterpret_cast<IMP>(&allocImp), &typeid(CanonicalIMP<StrongId>) });
        return *this;
    }

private:
    static StrongId allocImp(NSObject* receiver, SEL)
    {
        auto* cls = static_cast<Class*>(receiver);
        return cls->alloc();
    }

    Class* m_class;
};

// Creates and registers the runtime class for a C++ class (used by the macros).
Class* makeClass(const char* name, Class* superclass);

} // namespace objc

// In a class body: the class's runtime identity. The C++ class must derive,
// directly or not, from NSObject, and name its runtime superclass's C++ class.
#define OBJC_CLASS(Name)                         \
public:                                          \
    static ::objc::Class* classObject();         \
    ::objc::Class* isa() const override { return classObject(); }

// In the class's .cpp file: registers the class with the runtime at load
// time and describes its methods.
//   OBJC_IMPLEMENT_CLASS(UIView, UIResponder) { c.method<&UIView::layoutSubviews>("layoutSubviews"); }
#define OBJC_IMPLEMENT_CLASS(Name, Super)                                                   \
    static void objcDescribe_##Name(::objc::ClassBuilder<Name>& c);                         \
    ::objc::Class* Name::classObject()                                                      \
    {                                                                                       \
        static ::objc::Class* cls = [] {                                                    \
            auto* created = ::objc::makeClass(#Name, Super::classObject());                 \
            ::objc::ClassBuilder<Name> builder(created);                                    \
            objcDescribe_##Name(builder);                                                   \
            return created;                                                                 \
        }();                                                                                \
        return cls;                                                                         \
    }                                                                                       \
    [[maybe_unused]] static ::objc::Class* const objcRegistered_##Name = Name::classObject(); \
    static void objcDescribe_##Name([[maybe_unused]] ::objc::ClassBuilder<Name>& c)
