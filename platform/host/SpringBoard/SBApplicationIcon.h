#pragma once

#include "../HostWorld.h"

#include <UIKit/UIImage.h>

// An app's home-screen icon. The picture comes from the art folder
// ("icons/<bundle identifier>.png"), square as an app ships it, and is cut
// to the rounded square SpringBoard masks every icon with; an app without
// one gets a rounded square of its colour with its initial in white. Images
// are named "icon:<bundle identifier>" for dumps.
class SBApplicationIcon final : public NSObject {
    OBJC_CLASS(SBApplicationIcon)
public:
    static constexpr double iconSize = 60;
    // The corners of iOS's icon mask, as a share of the side.
    static constexpr double cornerRadiusRatio = 0.2237;

    SBApplicationIcon() = default;
    // `initWithApplication:` with an SBApplication; null for anything else.
    StrongId initWithApplication(NSObject* application);
    // `getIconImage:`: the icon at the screen's scale, whatever the format.
    RefPtr<UIImage> getIconImage(long long format) const;

    // The icon of an installed app, at `scale`.
    static RefPtr<UIImage> iconImageForApp(const HostWorld::App&, double scale);
    // Where icon pictures are looked for; none means every icon is drawn.
    static void setArtDirectory(std::string);

private:
    std::string m_bundleIdentifier;
};
