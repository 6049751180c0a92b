#include "UIWindow.h"

OBJC_IMPLEMENT_CLASS(UIWindow, UIView) { c.allocatable(); }
