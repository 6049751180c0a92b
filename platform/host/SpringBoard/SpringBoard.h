#pragma once

#include <UIKit/UIApplication.h>

// SpringBoard's application object: the shared application in the host
// process. The orientation it answers is the interface orientation of the
// whole home screen.
class SpringBoard final : public UIApplication {
    OBJC_CLASS(SpringBoard)
public:
    long long getSpringBoardOrientation() const { return statusBarOrientation(); }
};
