#pragma once

#include "Class.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>

namespace objc {

// The process-wide class table and the things the runtime does beside
// dispatch: looking classes and instance variables up by name, hooking
// methods, and reporting messages that nobody answers.
class Runtime {
public:
    static Runtime& shared();

    void registerClass(Class*);
    // Every registered class, hidden or not; for tools that walk the table.
    Class* classNamed(std::string_view name) const;
    std::vector<Class*> allClasses() const;

    // A hidden class is absent for lookups by name (objc_getClass), while the
    // code that defined it keeps using it directly. This is how a host lacking
    // a class is played.
    void hideClass(std::string name) { m_hiddenClasses.insert(std::move(name)); }
    bool isClassHidden(std::string_view name) const { return m_hiddenClasses.contains(std::string(name)); }
    void hideIvar(std::string className, std::string ivarName);

    // Where messages to unrecognised selectors and other runtime complaints go.
    using LogSink = std::function<void(const std::string&)>;
    void setLogSink(LogSink sink) { m_logSink = std::move(sink); }
    void log(const std::string& line) const;

    // Every method replaced through MSHookMessageEx, in order: (class, selector).
    const std::vector<std::pair<std::string, std::string>>& installedHooks() const { return m_installedHooks; }
    void recordHook(const Class*, SEL);

private:
    Runtime() = default;
    std::unordered_map<std::string, Class*> m_classes;
    std::vector<Class*> m_order;
    std::unordered_set<std::string> m_hiddenClasses;
    LogSink m_logSink;
    std::vector<std::pair<std::string, std::string>> m_installedHooks;
};

// What a message raises when its receiver does not recognise it. Only code
// inside objc::attempt() sees it; everywhere else the runtime logs the message
// and answers zero, so that one bad message cannot take the host down.
class Exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Runs body as an @try block: an Exception raised inside it (by an
// unrecognised selector or by objc::raise) ends the body and is handed to
// recover; the result of whichever ran is returned.
template<typename R>
R attempt(const std::function<R()>& body, const std::function<R(const Exception&)>& recover);
void raise(const std::string& reason);
bool insideAttempt();

// Looks a class up by name: null when the host has no such class.
Class* objc_getClass(std::string_view name);
// An instance variable of an object, by name: null when the object, its class
// or the variable is missing.
StrongId object_getIvar(NSObject* object, std::string_view name);
bool object_setIvar(NSObject* object, std::string_view name, StrongId value);

// Called when nothing answers a message. Raises inside objc::attempt(),
// otherwise logs and returns.
void unrecognizedSelector(NSObject* receiver, SEL);
[[noreturn]] void signatureMismatch(NSObject* receiver, SEL, const std::type_info& expected, const std::type_info& sent);

// Replaces a method of cls, keeping the implementation that was there. When
// the method is inherited, the original is the superclass's implementation as
// found now; when nobody implements it, the original is null and the method is
// added. Hooking the same method again chains: the second hook's original is
// the first hook's replacement.
void MSHookMessageEx(Class* cls, SEL sel, IMP replacement, IMP* original, const std::type_info& signature);

namespace detail {
struct AttemptScope {
    AttemptScope();
    ~AttemptScope();
};
}

template<typename R>
R attempt(const std::function<R()>& body, const std::function<R(const Exception&)>& recover)
{
    try {
        detail::AttemptScope scope;
        return body();
    } catch (const Exception& exception) {
        return recover(exception);
    }
}

} // namespace objc
