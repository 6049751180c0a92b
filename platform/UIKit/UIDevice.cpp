#include "UIDevice.h"

OBJC_IMPLEMENT_CLASS(UIDevice, NSObject)
{
    c.classMethod<&UIDevice::currentDevice>("currentDevice");
    c.method<&UIDevice::systemVersion>("systemVersion");
    c.method<&UIDevice::model>("model");
}

UIDevice* UIDevice::currentDevice()
{
    static UIDevice* device = new UIDevice();
    return device;
}
