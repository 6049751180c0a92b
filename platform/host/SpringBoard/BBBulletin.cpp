#include "BBBulletin.h"

OBJC_IMPLEMENT_CLASS(BBBulletin, NSObject)
{
    c.method<&BBBulletin::section>("section");
    c.method<&BBBulletin::title>("title");
    c.method<&BBBulletin::message>("message");
}
