#include "UINavigationBar.h"

OBJC_IMPLEMENT_CLASS(UINavigationBar, UIView) { c.allocatable(); }
