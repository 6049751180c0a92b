#include "UIGestureRecognizer.h"

OBJC_IMPLEMENT_CLASS(UIGestureRecognizer, NSObject) { }
