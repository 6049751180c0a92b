#include "SBApplication.h"

OBJC_IMPLEMENT_CLASS(SBApplication, NSObject)
{
    c.method<&SBApplication::bundleIdentifier>("bundleIdentifier");
    c.method<&SBApplication::displayName>("displayName");
}
