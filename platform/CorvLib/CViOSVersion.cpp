#include "CViOSVersion.h"

#include <Foundation/NSNumber.h>

#include <cstdint>
#include <string>

OBJC_IMPLEMENT_CLASS(CViOSVersion, NSObject)
{
    c.classMethod<&CViOSVersion::deviceVersion>("deviceVersion");
    c.classMethod<&CViOSVersion::deviceSize>("deviceSize");
}

static long long platformProperty(const std::string& key)
{
    StrongId registry = objc::send<StrongId>(objc::objc_getClass("IORegistry"), OBJC_SEL("sharedRegistry"));
    auto service = objc::send<uint32_t>(registry, OBJC_SEL("matchingServiceNamed:"), std::string("IOPlatformExpertDevice"));
    auto value = objc::send<RefPtr<NSNumber>>(registry, OBJC_SEL("propertyOfService:forKey:"), service, key);
    return value ? value->longLongValue() : 0;
}

long long CViOSVersion::deviceVersion() { return platformProperty("model-code"); }
long long CViOSVersion::deviceSize() { return platformProperty("screen-size-class"); }
