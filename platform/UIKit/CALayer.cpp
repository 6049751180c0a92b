#include "CALayer.h"

OBJC_IMPLEMENT_CLASS(CALayer, NSObject) { }
