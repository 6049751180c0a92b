#pragma once

#include <UIKit/UIView.h>

class KVSettings;

// The strip of app icons at the bottom of the panel.
class KVAppLauncherView final : public UIView {
    OBJC_CLASS(KVAppLauncherView)
public:
    KVAppLauncherView();
    void changeFrame(CGRect panelFrame);
    void update();

private:
    RefPtr<KVSettings> m_settings;
};
