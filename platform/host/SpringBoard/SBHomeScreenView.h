#pragma once

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

    // Builds the icons again from the installed apps.
    void reloadIcons();
    void layoutSubviews() override;

private:
    double m_scale { 2 };
};
