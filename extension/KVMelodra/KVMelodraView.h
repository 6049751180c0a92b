#pragma once

#include <UIKit/UIView.h>

class KVSettings;

// The now-playing strip of the panel, just above the app launcher.
class KVMelodraView final : public UIView {
    OBJC_CLASS(KVMelodraView)
public:
    KVMelodraView();
    void changeFrame(CGRect panelBounds);
    void update();

private:
    RefPtr<KVSettings> m_settings;
};
