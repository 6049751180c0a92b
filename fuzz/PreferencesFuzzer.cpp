// Feeds arbitrary bytes to the preferences reader as the preferences file,
// then asks every setting: nothing may crash, hang or leak, whatever the
// file holds.
#include "FuzzDeviceRoot.h"

#include <settings/KVSettings.h>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length)
{
    static bool prepared = (prepareFuzzDeviceRoot("prefs"), true);
    (void)prepared;
    auto data = NSData::dataWithBytes(bytes, length);
    NSFileManager::defaultManager()->createFileAtPath(KVSettings::preferencesPath, data.get());

    auto settings = objc::castRef<KVSettings>(make<KVSettings>()->init());
    volatile long sink = 0;
    volatile double interval = 0;
#define KV_ASK(key, fallback) sink = sink + settings->key();
#define KV_ASK_INTERVAL(key, fallback) interval = interval + settings->key();
#define KV_ASK_OBJECT(key, fallback) sink = sink + (settings->key() ? 1 : 0);
    KV_BOOL_SETTINGS(KV_ASK)
    KV_INT_SETTINGS(KV_ASK)
    KV_LIMIT_SETTINGS(KV_ASK)
    KV_INTERVAL_SETTINGS(KV_ASK_INTERVAL)
    KV_COLOR_SETTINGS(KV_ASK_OBJECT)
    KV_OBJECT_SETTINGS(KV_ASK_OBJECT)
    sink = sink + (settings->themeColor() ? 1 : 0);
    return 0;
}
