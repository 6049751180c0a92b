#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIVisualEffectView;

// The details of one notification, opened from its row in the table with
// `updateRow:` then `show`. It keeps the row it was handed; the detail
// controls (app icon and name, title, message, the reply and dismiss
// buttons) go into displayContainerView(), over the dark blur, and are placed
// by updateFrame. It reads the notifications module's settings.
class KVSingleNotificationDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVSingleNotificationDisplayView)
public:
    KVSingleNotificationDisplayView();
    static KVSingleNotificationDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation; controls go into
    // displayContainerView() and are placed here from width() and height().
    void updateFrame();

    // The record to show, as the caller hands it over before `show`; kept
    // (and shown again by a later `show`) until the next one replaces it.
    void updateRow(NSObject*);
    NSObject* row() const { return _row.get(); }

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
    // The notification row (CVNotificationRow) shown, or null before the first.
    StrongId _row;
};
