#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIVisualEffectView;

// The confirmation that removes every notification, opened from the
// table's footer. Its question and buttons go into displayContainerView(),
// over the dark blur, and are placed by updateFrame. It reads the
// notifications module's settings. The home button does not close it.
class KVClearAllNotificationsDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVClearAllNotificationsDisplayView)
public:
    KVClearAllNotificationsDisplayView();
    static KVClearAllNotificationsDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation; controls go into
    // displayContainerView() and are placed here from width() and height().
    void updateFrame();

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
};
