#include "FBRootWindow.h"

#include <UIKit/UIScreen.h>

OBJC_IMPLEMENT_CLASS(FBRootWindow, UIWindow)
{
    c.method<&FBRootWindow::initWithDisplay>("initWithDisplay:");
    c.allocatable();
}

StrongId FBRootWindow::initWithDisplay(NSObject* display)
{
    // The display answers its bounds as the screen does; without one, the
    // main screen is meant.
    CGRect bounds = display ? objc::send<CGRect>(display, OBJC_SEL("bounds")) : UIScreen::mainScreen()->bounds();
    initWithFrame(bounds);
    setName("FBRootWindow");
    return StrongId(this);
}
