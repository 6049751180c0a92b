#pragma once

#include <Foundation/NSNumber.h>
#include <objc/objc.h>

#include <cstdint>
#include <string>

// The I/O Kit registry as far as clients of the host read it: services are
// found by class name and answer properties by key, as IOKit's
// IOServiceGetMatchingService and IORegistryEntryCreateCFProperty do.
//
//   "IOPMPowerSource" (handle 1): "AppleRawCurrentCapacity" and
//     "AppleRawMaxCapacity", the battery's raw capacities in mAh (as the
//     home screen's controller knows them), "ExternalConnected".
//   "IOPlatformExpertDevice" (handle 2): "model-code", the device's model
//     number, and "screen-size-class" (1 for 3.5-inch, 2 for 4-inch, 3 for
//     4.7-inch, 4 for 5.5-inch, 5 for iPads).
//
// A handle of 0 is no service; properties of no service, or keys a service
// does not have, are null.
class IORegistry final : public NSObject {
    OBJC_CLASS(IORegistry)
public:
    static RefPtr<IORegistry> sharedRegistry();

    static constexpr uint32_t powerSource = 1;
    static constexpr uint32_t platformExpert = 2;

    // `matchingServiceNamed:`: the handle of the service of that class, or 0.
    uint32_t matchingServiceNamed(const std::string& className) const;
    // `propertyOfService:forKey:`: an NSNumber, or null.
    RefPtr<NSNumber> propertyOfService(uint32_t service, const std::string& key) const;

    void setDevice(int modelCode, int screenSizeClass)
    {
        m_modelCode = modelCode;
        m_screenSizeClass = screenSizeClass;
    }

private:
    int m_modelCode { 8 };
    int m_screenSizeClass { 3 };
};
