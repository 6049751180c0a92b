#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <string>
#include <vector>

// A posted notification: its name and the object that posted it.
class NSNotification final : public NSObject {
    OBJC_CLASS(NSNotification)
public:
    NSNotification(std::string name, NSObject* object);
    std::string name() const { return m_name; }
    NSObject* object() const { return m_object.get(); }

private:
    std::string m_name;
    StrongId m_object;
};

// The process's notification centre. Observers are not kept alive, as
// Foundation's are not: an observer removes itself before it goes. A
// notification is delivered synchronously, through the runtime, to the
// observers registered when it was posted and still registered when their
// turn comes.
class NSNotificationCenter final : public NSObject {
    OBJC_CLASS(NSNotificationCenter)
public:
    static NSNotificationCenter* defaultCenter();

    // A null object observes the name whoever posts it.
    void addObserver(NSObject* observer, objc::SEL selector, const std::string& name, NSObject* object = nullptr);
    void removeObserver(NSObject* observer);
    void postNotificationName(const std::string& name, NSObject* object = nullptr);

private:
    struct Observation {
        NSObject* observer;
        objc::SEL selector;
        std::string name;
        NSObject* object;
        uint64_t token;
    };
    std::vector<Observation> m_observations;
    uint64_t m_nextToken { 0 };
};
