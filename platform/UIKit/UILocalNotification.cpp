#include "UILocalNotification.h"

OBJC_IMPLEMENT_CLASS(UILocalNotification, NSObject)
{
    c.method<&UILocalNotification::fireDate>("fireDate");
    c.method<&UILocalNotification::setFireDate>("setFireDate:");
    c.method<&UILocalNotification::alertBody>("alertBody");
    c.method<&UILocalNotification::setAlertBody>("setAlertBody:");
    c.allocatable();
}
