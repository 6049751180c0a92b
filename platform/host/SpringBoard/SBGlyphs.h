#pragma once

#include <UIKit/UIImage.h>

// The small white pictures of SpringBoard's own chrome, drawn by code at the
// screen's scale. Each image is named after what it shows, for dumps.
namespace SBGlyphs {

RefPtr<UIImage> camera(double scale);
// The magnifying glass in front of the search field's placeholder.
RefPtr<UIImage> magnifier(double scale);
// The chevron in front of "slide to unlock".
RefPtr<UIImage> unlockChevron(double scale);
// The padlock in the middle of the status bar while the device is locked.
RefPtr<UIImage> padlock(double scale);
// The status bar's signal strength: five dots, `bars` of them filled.
RefPtr<UIImage> signalDots(int bars, double scale);
// The status bar's battery, filled to `level` (0 to 1), with a bolt while charging.
RefPtr<UIImage> battery(double level, bool charging, double scale);
// Previous track, play or pause, next track, side by side.
RefPtr<UIImage> transportControls(bool playing, double scale);
// A gentle gradient standing in for the wallpaper when no artwork is found.
RefPtr<UIImage> fallbackWallpaper(CGSize, double scale);

} // namespace SBGlyphs
