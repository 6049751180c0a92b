#include "SBWallpaperController.h"

#include "../HostShared.h"

OBJC_IMPLEMENT_CLASS(SBWallpaperController, NSObject)
{
    c.classMethod<&SBWallpaperController::sharedInstance>("sharedInstance");
    c.ivar<&SBWallpaperController::m_lockscreenWallpaperView>("_lockscreenWallpaperView");
    c.ivar<&SBWallpaperController::m_sharedWallpaperView>("_sharedWallpaperView");
    c.ivar<&SBWallpaperController::m_homescreenWallpaperView>("_homescreenWallpaperView");
}

RefPtr<SBWallpaperController> SBWallpaperController::sharedInstance()
{
    static auto* slot = new RefPtr<SBWallpaperController>();
    return host::sharedInstanceIn(*slot);
}

void SBWallpaperController::setWallpaper(RefPtr<UIImage> image, CGRect screenBounds)
{
    if (m_sharedWallpaperView)
        m_sharedWallpaperView->removeFromSuperview();
    m_sharedWallpaperView = make<SBFStaticWallpaperView>(screenBounds, std::move(image));
    m_sharedWallpaperView->setName("_sharedWallpaperView");
    m_sharedWallpaperView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
}
