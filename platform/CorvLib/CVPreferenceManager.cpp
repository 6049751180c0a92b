#include "CVPreferenceManager.h"

#include <Foundation/NSNumber.h>
#include <Foundation/NSString.h>

OBJC_IMPLEMENT_CLASS(CVPreferenceManager, NSObject)
{
    c.method<&CVPreferenceManager::initWithContentsOfFile>("initWithContentsOfFile:");
    c.method<&CVPreferenceManager::valueForkey>("valueForkey:fallback:");
    c.allocatable();
}

RefPtr<CVPreferenceManager> CVPreferenceManager::initWithContentsOfFile(const std::string& path)
{
    m_preferences = NSDictionary::dictionaryWithContentsOfFile(path);
    return this;
}

StrongId CVPreferenceManager::valueForkey(const std::string& key, const std::string& fallback) const
{
    StrongId value = m_preferences ? m_preferences->objectForKey(key) : nullptr;
    if (objc::cast<NSString>(value) || objc::cast<NSNumber>(value))
        return value;
    return NSString::create(fallback);
}
