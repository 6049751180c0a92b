#include "NSNotificationCenter.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(NSNotification, NSObject)
{
    c.method<&NSNotification::name>("name");
    c.method<&NSNotification::object>("object");
}

OBJC_IMPLEMENT_CLASS(NSNotificationCenter, NSObject)
{
    c.classMethod<&NSNotificationCenter::defaultCenter>("defaultCenter");
    c.method<&NSNotificationCenter::removeObserver>("removeObserver:");
}

NSNotification::NSNotification(std::string name, NSObject* object)
    : m_name(std::move(name))
    , m_object(object)
{
}

NSNotificationCenter* NSNotificationCenter::defaultCenter()
{
    static NSNotificationCenter* center = make<NSNotificationCenter>().leakRef();
    return center;
}

void NSNotificationCenter::addObserver(NSObject* observer, objc::SEL selector, const std::string& name, NSObject* object)
{
    if (!observer || !selector)
        return;
    m_observations.push_back({ observer, selector, name, object, m_nextToken++ });
}

void NSNotificationCenter::removeObserver(NSObject* observer)
{
    std::erase_if(m_observations, [observer](const Observation& observation) { return observation.observer == observer; });
}

void NSNotificationCenter::postNotificationName(const std::string& name, NSObject* object)
{
    auto notification = make<NSNotification>(name, object);
    // An observer may add or remove observations while it is told: the
    // tokens name the ones to tell, and each is looked up again before.
    std::vector<uint64_t> tokens;
    for (auto& observation : m_observations) {
        if (observation.name == name && (!observation.object || observation.object == object))
            tokens.push_back(observation.token);
    }
    for (uint64_t token : tokens) {
        auto it = std::find_if(m_observations.begin(), m_observations.end(), [token](const Observation& observation) { return observation.token == token; });
        if (it == m_observations.end())
            continue;
        RefPtr<NSObject> protect(it->observer);
        objc::send(it->observer, it->selector, static_cast<NSObject*>(notification.get()));
    }
}
