#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIButton;
class UIVisualEffectView;

// The confirmation that removes every notification, opened from the table's
// footer: one large square button in the middle, over the dark blur. Its
// size is half the screen's width as measured when the overlay was made, in
// both orientations. It reads the notifications module's settings. The home
// button does not close it.
class KVClearAllNotificationsDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVClearAllNotificationsDisplayView)
public:
    KVClearAllNotificationsDisplayView();
    static KVClearAllNotificationsDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation.
    void updateFrame();

    // Removes every app's notifications (the sections the table shows now)
    // and makes the table reload; nothing while the overlay is not active.
    void clearAllNotificationsButtonReleased(NSObject* sender);

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIButton> _clearAllNotificationsButton;
};
