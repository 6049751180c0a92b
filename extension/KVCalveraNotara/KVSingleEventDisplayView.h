#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIVisualEffectView;

// The details of one calendar event or reminder, opened from its row in the
// schedule table with `updateEventItem:` then `show`. It keeps the item it
// was handed; the detail controls (title, time, location, notes and the
// button that opens the item's app) go into displayContainerView(), over the
// dark blur, and are placed by updateFrame.
class KVSingleEventDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVSingleEventDisplayView)
public:
    KVSingleEventDisplayView();
    static KVSingleEventDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation; controls go into
    // displayContainerView() and are placed here from width() and height().
    void updateFrame();

    // The record to show, as the caller hands it over before `show`; kept
    // (and shown again by a later `show`) until the next one replaces it.
    void updateEventItem(NSObject*);
    NSObject* eventItem() const { return _eventItem.get(); }

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
    // The event item (KVEventItem) shown, or null before the first.
    StrongId _eventItem;
};
