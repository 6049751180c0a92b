#pragma once

#include <cstddef>
#include <functional>
#include <utility>

// An intrusive, nullable strong reference, in the manner of WebKit's RefPtr.
// T provides ref() and deref(); a new object starts with one reference that
// adoptRef() takes over, so `make<T>(...)` is the usual way to create one.
template<typename T>
class RefPtr {
public:
    RefPtr() = default;
    RefPtr(std::nullptr_t) { }
    RefPtr(T* ptr)
        : m_ptr(ptr)
    {
        if (m_ptr)
            m_ptr->ref();
    }
    RefPtr(const RefPtr& other)
        : RefPtr(other.m_ptr)
    {
    }
    template<typename U>
    RefPtr(const RefPtr<U>& other)
        : RefPtr(static_cast<T*>(other.get()))
    {
    }
    RefPtr(RefPtr&& other) noexcept
        : m_ptr(std::exchange(other.m_ptr, nullptr))
    {
    }
    template<typename U>
    RefPtr(RefPtr<U>&& other) noexcept
        : m_ptr(static_cast<T*>(other.leakRef()))
    {
    }
    ~RefPtr()
    {
        if (m_ptr)
            m_ptr->deref();
    }

    RefPtr& operator=(RefPtr other) noexcept
    {
        std::swap(m_ptr, other.m_ptr);
        return *this;
    }

    T* get() const { return m_ptr; }
    T* operator->() const { return m_ptr; }
    T& operator*() const { return *m_ptr; }
    explicit operator bool() const { return m_ptr != nullptr; }
    operator T*() const { return m_ptr; }

    [[nodiscard]] T* leakRef() { return std::exchange(m_ptr, nullptr); }

    static RefPtr adopt(T* ptr)
    {
        RefPtr result;
        result.m_ptr = ptr;
        return result;
    }

private:
    T* m_ptr { nullptr };
};

template<typename T>
RefPtr<T> adoptRef(T* ptr) { return RefPtr<T>::adopt(ptr); }

// Creates an object and hands back the only reference to it.
template<typename T, typename... Args>
RefPtr<T> make(Args&&... args) { return adoptRef(new T(std::forward<Args>(args)...)); }

template<typename T, typename U>
bool operator==(const RefPtr<T>& a, const RefPtr<U>& b) { return a.get() == b.get(); }
template<typename T, typename U>
bool operator==(const RefPtr<T>& a, U* b) { return a.get() == b; }
template<typename T>
bool operator==(const RefPtr<T>& a, std::nullptr_t) { return !a; }

template<typename T>
struct std::hash<RefPtr<T>> {
    size_t operator()(const RefPtr<T>& p) const { return std::hash<T*>()(p.get()); }
};
