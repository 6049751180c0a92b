#pragma once

#include "../HostWorld.h"

#include <UIKit/UIView.h>

#include <string>

// The home screen behind the lock screen: the installed apps' icons in rows
// of four with their names, over the wallpaper (SBApplicationIcon draws
// the icons).
class SBHomeScreenView final : public UIView {
    OBJC_CLASS(SBHomeScreenView)
public:
    SBHomeScreenView() = default;
    SBHomeScreenView(CGRect frame, double scale);

    static constexpr double iconSize = 60;
    static constexpr double cellHeight = 88;
    // An app's icon with its name under it, in a cell `iconSize` wide and
    // `cellHeight` high, named after the bundle (the search page's
    // suggestions use it too).
    static RefPtr<UIView> makeIconCell(const HostWorld::App&, double scale);

    // Builds the icons again from the installed apps.
    void reloadIcons();
    // Asks again for each icon's picture: icons are kept once made, so only
    // a live one changes (the calendar's, once the day has changed).
    void refreshIconImages() { refreshIconCells(this, m_scale); }
    // The same for the icon cells among a view's subviews.
    static void refreshIconCells(UIView* container, double scale);
    void layoutSubviews() override;

private:
    double m_scale { 2 };
};
