#pragma once

#include <CorvLib/CVDisplayView.h>

class KVEventItem;
class KVSettings;
class UIColor;
class UIImageView;
class UILabel;
class UIVisualEffectView;

// The details of one calendar event or reminder, opened from its row in the
// schedule table with `updateEventItem:` then `show`: the icon of Calendar or
// Reminders, a heading with the kind and the time, and the title, location
// and notes, over the dark blur. It keeps the item it was handed (and shows
// it again on a later `show`) until the next one replaces it.
class KVSingleEventDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVSingleEventDisplayView)
public:
    KVSingleEventDisplayView();
    static KVSingleEventDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation.
    void updateFrame();

    // Fills the overlay for a KVEventItem; does not show it.
    void updateEventItem(NSObject*);
    NSObject* eventItem() const { return _eventItem.get(); }
    void setEventItem(NSObject* item) { _eventItem = StrongId(item); }

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIImageView> _appIconImageView;
    RefPtr<UILabel> _eventTypeLabel;
    RefPtr<UILabel> _eventDescriptionLabel;
    // The event item (KVEventItem) shown, or null before the first.
    StrongId _eventItem;
};
