#include "UIScreen.h"

#include "UIApplication.h"

OBJC_IMPLEMENT_CLASS(UIScreen, NSObject)
{
    c.classMethod<&UIScreen::mainScreen>("mainScreen");
    c.method<&UIScreen::bounds>("bounds");
    c.method<&UIScreen::nativeBounds>("nativeBounds");
    c.method<&UIScreen::scale>("scale");
}

UIScreen* UIScreen::mainScreen()
{
    static UIScreen* screen = new UIScreen();
    return screen;
}

CGRect UIScreen::bounds() const
{
    if (UIInterfaceOrientationIsLandscape(UIApplication::sharedApplication()->statusBarOrientation()))
        return CGRectMake(0, 0, m_portraitSize.height, m_portraitSize.width);
    return CGRectMake(0, 0, m_portraitSize.width, m_portraitSize.height);
}

CGRect UIScreen::nativeBounds() const { return CGRectMake(0, 0, m_portraitSize.width * m_scale, m_portraitSize.height * m_scale); }

void UIScreen::setDeviceShape(CGSize portraitSize, double scale)
{
    if (portraitSize.width <= 0 || portraitSize.height <= 0 || scale <= 0)
        return;
    m_portraitSize = portraitSize;
    m_scale = scale;
}
