#pragma once

#include <CorvLib/CVContainerView.h>

class KVSettings;
class UIVisualEffectView;

// The weather overlay opened from the panel's weather line: the full
// forecast over a dark blur.
class KVWeatherDisplayView final : public CVContainerView {
    OBJC_CLASS(KVWeatherDisplayView)
public:
    KVWeatherDisplayView();
    static KVWeatherDisplayView* sharedInstance();

    void show() override;
    void viewWillShow() override;
    void viewWillHide() override;
    void updateFrame();

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
};
