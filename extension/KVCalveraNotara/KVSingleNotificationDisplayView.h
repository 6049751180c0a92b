#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIButton;
class UIColor;
class UIImageView;
class UILabel;
class UIVisualEffectView;

// The details of one notification, opened from its row in the table with
// `updateRow:` then `show`: the app's icon and name with the time, the
// title, subtitle and message, the attached picture, and buttons to open the
// notification, dismiss it, and (for Messages and Mail) run its own actions.
// It reads the notifications module's settings, and keeps the row it was
// handed until the next one replaces it.
class KVSingleNotificationDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVSingleNotificationDisplayView)
public:
    KVSingleNotificationDisplayView();
    static KVSingleNotificationDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation.
    void updateFrame();

    // Fills the overlay for a CVNotificationRow; does not show it.
    void updateRow(NSObject*);
    NSObject* row() const { return _row.get(); }
    void setRow(NSObject* row) { _row = StrongId(row); }

    bool isPortrait() const;
    bool isMessagesApp() const;
    bool isMailApp() const;

    void launchAppButtonReleased(NSObject* sender);
    void dismissNotificationButtonReleased(NSObject* sender);
    void notificationActionButton1Released(NSObject* sender);
    void notificationActionButton2Released(NSObject* sender);
    void clearRepresentedNotification();
    void hideNotificationActionButtons();
    void showNotificationAction1Button();
    void showNotificationAction2Button();

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIImageView> _appIconImageView;
    RefPtr<UILabel> _appNameLabel;
    RefPtr<UILabel> _notificationDescriptionLabel;
    RefPtr<UIImageView> _attachmentImageView;
    RefPtr<UIButton> _launchAppButton;
    RefPtr<UILabel> _launchAppButtonLabel;
    RefPtr<UIButton> _dismissNotificationButton;
    RefPtr<UILabel> _dismissNotificationButtonLabel;
    RefPtr<UIButton> _notificationAction1Button;
    RefPtr<UILabel> _notificationAction1ButtonLabel;
    RefPtr<UIButton> _notificationAction2Button;
    RefPtr<UILabel> _notificationAction2ButtonLabel;
    // The notification row (CVNotificationRow) shown, or null before the first.
    StrongId _row;

private:
    std::string bundleIdentifier() const;
    void reloadTable() const;
};
