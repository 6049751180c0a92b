#pragma once

#include "SBFStaticWallpaperView.h"

// The wallpapers. One picture serves both the lock screen and the home
// screen, so only the shared wallpaper view exists; the lock-screen-only and
// home-screen-only ones stay empty, as on a phone with a single wallpaper.
class SBWallpaperController final : public NSObject {
    OBJC_CLASS(SBWallpaperController)
public:
    static RefPtr<SBWallpaperController> sharedInstance();

    SBFStaticWallpaperView* sharedWallpaperView() const { return m_sharedWallpaperView.get(); }
    void setWallpaper(RefPtr<UIImage>, CGRect screenBounds);

    // Instance variables that clients read by name through the runtime.
    RefPtr<SBFStaticWallpaperView> m_lockscreenWallpaperView;
    RefPtr<SBFStaticWallpaperView> m_sharedWallpaperView;
    RefPtr<SBFStaticWallpaperView> m_homescreenWallpaperView;
};
