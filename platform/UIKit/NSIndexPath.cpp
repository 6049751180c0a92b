#include "NSIndexPath.h"

OBJC_IMPLEMENT_CLASS(NSIndexPath, NSObject)
{
    c.classMethod<&NSIndexPath::indexPathForRowInSection>("indexPathForRow:inSection:");
    c.method<&NSIndexPath::row>("row");
    c.method<&NSIndexPath::section>("section");
}

std::string NSIndexPath::description() const { return "{" + std::to_string(m_section) + ", " + std::to_string(m_row) + "}"; }
