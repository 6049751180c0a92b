#pragma once

#include <UIKit/UITableView.h>
#include <UIKit/UIViewController.h>

#include <CoreGraphics/CGGeometry.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class KVEventItem;
class KVSettings;

class NSDate;
class NSIndexPath;
class UIColor;
class UIGestureRecognizer;
class UIImage;
class UITableViewCell;
class UIView;

// The schedule and notifications table of the panel: its data, the reload
// pipeline that fills it from the calendar store and the notification
// catalogue, and the table's sections, headers, rows and taps. The
// controller is the table's data source and delegate.
//
// Sections, in order: the schedule header (0), one section per kind of
// scheduled item (events, reminders; the sooner kind first), the
// notifications header, one section per app, and the "Dismiss All
// Notifications" footer. An absent section has the number 999.
//
// A reload runs as a pipeline: the reminders are fetched from a global
// queue, the calendar store answers on its own queue, and everything else
// (events, notifications, the dictionaries, the next item, the table's
// reload) runs as one task on the main queue. A reload asked for while one
// is in flight is dropped; a forced one starts anyway, and then both write
// into the dictionaries the newer one made (the last to finish wins).
class KVTableViewController final : public UIViewController {
    OBJC_CLASS(KVTableViewController)
public:
    static constexpr long missingSection = 999;

    KVTableViewController();

    // Data.
    void reloadTableViewData();
    void forceReloadTableViewData();
    void refreshTableViewLayout();
    std::string timeUntilNextEvent() const;
    std::vector<std::string> calendarBlacklist() const;
    void changeFrame(CGRect panelBounds);

    UITableView* tableView() const { return m_tableView.get(); }
    KVSettings* settings() const { return m_settings.get(); }
    double cellHeight() const { return 40.0; }
    bool hasAnythingScheduled() const { return m_hasAnyReminders || m_hasAnyEvents; }
    bool hasLoadedDataAtLeastOnce() const { return m_hasLoadedDataAtLeastOnce; }
    bool isCurrentlyReloadingData() const { return m_isCurrentlyReloadingData; }
    bool hasAnyReminders() const { return m_hasAnyReminders; }
    bool hasAnyEvents() const { return m_hasAnyEvents; }
    bool hasAnyNotifications() const { return m_hasAnyNotifications; }
    int secondsUntilNextEvent() const { return m_secondsUntilNextEvent; }
    int notificationCount() const { return m_notificationCount; }
    RefPtr<NSString> nextEventType() const { return m_nextEventType; }
    RefPtr<NSDictionary> eventData() const { return m_eventData; }
    RefPtr<NSDictionary> notificationData() const { return m_notificationData; }
    RefPtr<NSDictionary> notificationSectionsData() const { return m_notificationSectionsData; }
    RefPtr<NSDictionary> sectionsCollapsedState() const { return m_sectionsCollapsedState; }
    RefPtr<NSDictionary> sectionsColorData() const { return m_sectionsColorData; }
    double calveraSectionHeaderTransparency() const { return m_calveraSectionHeaderTransparency; }
    double notaraSectionHeaderTransparency() const { return m_notaraSectionHeaderTransparency; }

    // Sections.
    long sectionForEventsHeader() const;
    long sectionForNotificationsHeader() const;
    long sectionForNotificationsFooter() const;
    void changeCollapseStateOfSectionWithIdentifier(const std::string&);
    bool isCollapsed(const std::string& identifier) const;

    // Table data source and delegate.
    long numberOfSectionsInTableView(UITableView*) const;
    long numberOfRowsInSection(UITableView*, long section) const;
    double heightForHeaderInSection(UITableView*, long section) const;
    double heightForFooterInSection(UITableView*, long section) const;
    double heightForRowAtIndexPath(UITableView*, NSIndexPath*) const;
    RefPtr<UIView> viewForHeaderInSection(UITableView*, long section);
    RefPtr<UITableViewCell> cellForRowAtIndexPath(UITableView*, NSIndexPath*);

    // Views.
    RefPtr<UIView> sectionHeaderViewForType(const std::string& type) const;
    RefPtr<UIView> eventHeaderViewAtSection(long section);
    RefPtr<UIView> notificationHeaderViewAtSection(long section);
    RefPtr<UIView> notificationFooterView();
    RefPtr<UITableViewCell> cellForEventAtIndexPath(NSIndexPath*);
    RefPtr<UITableViewCell> cellForNotificationAtIndexPath(NSIndexPath*);

    // Gestures and taps.
    void sectionDoubleTapRecognizer(UIGestureRecognizer*);
    void sectionLongPressRecognizer(UIGestureRecognizer*);
    void notificationSectionSingleTapRecognizer(UIGestureRecognizer*);
    void eventSectionSingleTapRecognizer(UIGestureRecognizer*);
    void eventRowSingleTapRecognizer(UIGestureRecognizer*);
    void notificationRowSingleTapRecognizer(UIGestureRecognizer*);
    void notificationFooterViewSingleTapRecognizer(UIGestureRecognizer*);
    void showEventDisplayViewForEventItem(NSObject* item);
    void showNotificationDisplayViewForNotificationRow(NSObject* row);

private:
    struct Pipeline;
    void fetchReminders(std::shared_ptr<Pipeline>);
    void finishReload(std::shared_ptr<Pipeline>, StrongId reminders);
    void loadReminders(Pipeline&, StrongId reminders);
    void loadEvents(Pipeline&);
    void loadNotifications(Pipeline&);

    // The items of a schedule section or the rows of an app section, or null.
    RefPtr<NSArray> eventItemsInSection(long section) const;
    RefPtr<NSArray> notificationRowsInSection(long section) const;
    RefPtr<UIColor> automaticEventColor(const std::string& type);
    RefPtr<UIColor> automaticColor(const std::string& identifier, const std::function<RefPtr<UIColor>()>& compute);
    RefPtr<UITableViewCell> blankCell() const;

    RefPtr<KVSettings> m_settings;
    RefPtr<UIImage> m_bulletImage;
    double m_timeStampTransparency { 1.0 };
    double m_calveraSectionHeaderTransparency { 0.1 };
    double m_calveraRowTransparencyWhenAutoColored { 0.05 };
    double m_notaraSectionHeaderTransparency { 0.1 };
    double m_notaraRowTransparencyWhenAutoColored { 0.05 };
    bool m_hasLoadedDataAtLeastOnce { false };
    bool m_isCurrentlyReloadingData { false };
    bool m_hasAnyReminders { false };
    bool m_hasAnyEvents { false };
    bool m_hasAnyNotifications { false };
    int m_secondsUntilNextEvent { -1 };
    int m_notificationCount { 0 };
    RefPtr<UITableView> m_tableView;
    RefPtr<NSDictionary> m_eventData;
    RefPtr<NSDictionary> m_notificationData;
    RefPtr<NSDictionary> m_notificationSectionsData;
    RefPtr<NSDictionary> m_sectionsCollapsedState;
    RefPtr<NSDictionary> m_sectionsColorData;
    RefPtr<NSString> m_nextEventType;
};
