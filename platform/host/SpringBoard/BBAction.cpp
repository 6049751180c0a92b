#include "BBAction.h"

OBJC_IMPLEMENT_CLASS(BBAction, NSObject)
{
    c.method<&BBAction::identifier>("identifier");
    c.method<&BBAction::launchURL>("launchURL");
}
