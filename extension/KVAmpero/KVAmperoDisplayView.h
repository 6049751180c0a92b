#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIVisualEffectView;

// The battery overlay opened from the panel's battery summary.
class KVAmperoDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVAmperoDisplayView)
public:
    KVAmperoDisplayView();
    static KVAmperoDisplayView* sharedInstance();

    void show();
    void hide();
    void updateFrame();

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
};
