#include "IORegistry.h"

#include "../HostShared.h"
#include "../SpringBoard/SBUIController.h"

OBJC_IMPLEMENT_CLASS(IORegistry, NSObject)
{
    c.classMethod<&IORegistry::sharedRegistry>("sharedRegistry");
    c.method<&IORegistry::matchingServiceNamed>("matchingServiceNamed:");
    c.method<&IORegistry::propertyOfService>("propertyOfService:forKey:");
}

RefPtr<IORegistry> IORegistry::sharedRegistry()
{
    static auto* slot = new RefPtr<IORegistry>();
    return host::sharedInstanceIn(*slot);
}

uint32_t IORegistry::matchingServiceNamed(const std::string& className) const
{
    if (className == "IOPMPowerSource")
        return powerSource;
    if (className == "IOPlatformExpertDevice")
        return platformExpert;
    return 0;
}

RefPtr<NSNumber> IORegistry::propertyOfService(uint32_t service, const std::string& key) const
{
    if (service == powerSource) {
        auto controller = SBUIController::sharedInstance();
        if (key == "AppleRawCurrentCapacity")
            return NSNumber::numberWithLongLong(controller->currentCapacity());
        if (key == "AppleRawMaxCapacity")
            return NSNumber::numberWithLongLong(controller->maxCapacity());
        if (key == "ExternalConnected")
            return NSNumber::numberWithBool(controller->isOnAC());
    } else if (service == platformExpert) {
        if (key == "model-code")
            return NSNumber::numberWithLongLong(m_modelCode);
        if (key == "screen-size-class")
            return NSNumber::numberWithLongLong(m_screenSizeClass);
    }
    return nullptr;
}
