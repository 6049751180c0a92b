#include "KVSettings.h"

#include <CorvLib/CVColorFactory.h>
#include <Foundation/Dispatch.h>
#include <Foundation/NSString.h>

OBJC_IMPLEMENT_CLASS(KVSettings, NSObject)
{
    c.classMethod<&KVSettings::sharedInstance>("sharedInstance");
    c.method<&KVSettings::init>("init");
    c.method<&KVSettings::reload>("reload");
    c.method<&KVSettings::prefs>("prefs");
    c.method<&KVSettings::setPrefs>("setPrefs:");
    c.method<&KVSettings::themeColorValue>("themeColor");
#define KV_REGISTER(key, fallback) c.method<&KVSettings::key##Value>(#key);
    KV_BOOL_SETTINGS(KV_REGISTER)
    KV_INT_SETTINGS(KV_REGISTER)
    KV_LIMIT_SETTINGS(KV_REGISTER)
    KV_INTERVAL_SETTINGS(KV_REGISTER)
    KV_COLOR_SETTINGS(KV_REGISTER)
    KV_OBJECT_SETTINGS(KV_REGISTER)
#undef KV_REGISTER
    c.allocatable();
}

KVSettings* KVSettings::sharedInstance()
{
    static dispatch_once_t once;
    static KVSettings* shared;
    dispatch_once(&once, [] {
        // `[[self alloc] init]` through the runtime, so that hooks on init see it.
        auto created = objc::alloc(classObject());
        objc::send<StrongId>(created, OBJC_SEL("init"));
        shared = static_cast<KVSettings*>(created.leakRef());
    });
    return shared;
}

RefPtr<KVSettings> KVSettings::init()
{
    reload();
    return this;
}

void KVSettings::reload()
{
    auto reader = objc::alloc(CVPreferenceManager::classObject());
    m_prefs = objc::castRef<CVPreferenceManager>(objc::send<StrongId>(reader, OBJC_SEL("initWithContentsOfFile:"), std::string(preferencesPath)));
}

RefPtr<UIColor> KVSettings::themeColorValue() const { return UIColor::whiteColor(); }

StrongId KVSettings::valueForKey(const char* key, const std::string& fallback) const
{
    return objc::send<StrongId>(m_prefs, OBJC_SEL("valueForkey:fallback:"), std::string(key), fallback);
}

int KVSettings::limitForKey(const char* key, const std::string& fallback) const
{
    // The only guarded reads: a reader or a value that raises gives 99.
    int limit = objc::attempt<int>(
        [&] { return objc::send<int>(valueForKey(key, fallback), OBJC_SEL("intValue")); },
        [](const objc::Exception&) { return 99; });
    return limit < 0 ? 0 : limit;
}

// Conversions are messages, as on the phone: a value that does not answer
// one is the runtime's to report.
#define KV_DEFINE_BOOL(key, fallback) \
    bool KVSettings::key##Value() const { return objc::send<bool>(valueForKey(#key, fallback), OBJC_SEL("boolValue")); }
#define KV_DEFINE_INT(key, fallback) \
    int KVSettings::key##Value() const { return objc::send<int>(valueForKey(#key, fallback), OBJC_SEL("intValue")); }
#define KV_DEFINE_LIMIT(key, fallback) \
    int KVSettings::key##Value() const { return limitForKey(#key, fallback); }
#define KV_DEFINE_INTERVAL(key, fallback) \
    double KVSettings::key##Value() const { return objc::send<float>(valueForKey(#key, fallback), OBJC_SEL("floatValue")); }
#define KV_DEFINE_COLOR(key, fallback)                                                                               \
    RefPtr<UIColor> KVSettings::key##Value() const                                                                   \
    {                                                                                                                \
        return objc::send<RefPtr<UIColor>>(CVColorFactory::classObject(), OBJC_SEL("colorFromHexString:"), NSStringValue(valueForKey(#key, fallback).get())); \
    }
#define KV_DEFINE_OBJECT(key, fallback) \
    StrongId KVSettings::key##Value() const { return valueForKey(#key, fallback); }

KV_BOOL_SETTINGS(KV_DEFINE_BOOL)
KV_INT_SETTINGS(KV_DEFINE_INT)
KV_LIMIT_SETTINGS(KV_DEFINE_LIMIT)
KV_INTERVAL_SETTINGS(KV_DEFINE_INTERVAL)
KV_COLOR_SETTINGS(KV_DEFINE_COLOR)
KV_OBJECT_SETTINGS(KV_DEFINE_OBJECT)
