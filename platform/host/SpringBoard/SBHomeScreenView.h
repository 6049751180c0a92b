#pragma once

#include <UIKit/UIView.h>

#include <string>

// The home screen behind the lock screen: the installed apps' icons in rows
// of four with their names, over the wallpaper. Icons come from the art
// folder ("icons/<bundle identifier>.png"); an app without one gets a
// rounded square of its colour with its initial.
class SBHomeScreenView final : public UIView {
    OBJC_CLASS(SBHomeScreenView)
public:
    SBHomeScreenView() = default;
    SBHomeScreenView(CGRect frame, std::string artDirectory, double scale);

    // Builds the icons again from the installed apps.
    void reloadIcons();
    void layoutSubviews() override;

private:
    std::string m_artDirectory;
    double m_scale { 2 };
};
