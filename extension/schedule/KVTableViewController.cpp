#include "KVTableViewController.h"

#include "KVEventItem.h"
#include "KVScheduleTexts.h"
#include "KVTableViewRowCell.h"
#include "KVTableViewSectionHeaderCell.h"

#include "KVCalveraNotara/KVCalveraNotaraSupport.h"
#include "KVCalveraNotara/KVNotificationSectionDismissButton.h"
#include "KVMelodra/KVMelodraView.h"
#include "_KVContainerView/KVView.h"
#include "host/HookGroup.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVAppItem.h>
#include <CorvLib/CVImageFactory.h>
#include <CorvLib/CVNotificationRow.h>
#include <CorvLib/CVNotificationSection.h>
#include <CorvLib/CVNotificationsProvider.h>
#include <Foundation/Dispatch.h>
#include <Foundation/IntegerConversion.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSCalendar.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSNumber.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UILongPressGestureRecognizer.h>
#include <UIKit/UITableView.h>
#include <UIKit/UITapGestureRecognizer.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <unordered_map>

static constexpr const char* lightFont = "HelveticaNeue-Light";

OBJC_IMPLEMENT_CLASS(KVTableViewController, UIViewController)
{
    c.method<&KVTableViewController::tableView>("tableView");
    c.method<&KVTableViewController::changeFrame>("changeFrame:");
    c.method<&KVTableViewController::refreshTableViewLayout>("refreshTableViewLayout");
    c.method<&KVTableViewController::reloadTableViewData>("reloadTableViewData");
    c.method<&KVTableViewController::forceReloadTableViewData>("forceReloadTableViewData");
    c.method<&KVTableViewController::timeUntilNextEvent>("timeUntilNextEvent");
    c.method<&KVTableViewController::hasLoadedDataAtLeastOnce>("hasLoadedDataAtLeastOnce");
    c.method<&KVTableViewController::isCurrentlyReloadingData>("isCurrentlyReloadingData");
    c.method<&KVTableViewController::eventData>("eventData");
    c.method<&KVTableViewController::notificationData>("notificationData");
    c.method<&KVTableViewController::notificationSectionsData>("notificationSectionsData");
    c.method<&KVTableViewController::changeCollapseStateOfSectionWithIdentifier>("changeCollapseStateOfSectionWithIdentifier:");
    c.method<&KVTableViewController::numberOfSectionsInTableView>("numberOfSectionsInTableView:");
    c.method<&KVTableViewController::numberOfRowsInSection>("tableView:numberOfRowsInSection:");
    c.method<&KVTableViewController::heightForHeaderInSection>("tableView:heightForHeaderInSection:");
    c.method<&KVTableViewController::heightForFooterInSection>("tableView:heightForFooterInSection:");
    c.method<&KVTableViewController::heightForRowAtIndexPath>("tableView:heightForRowAtIndexPath:");
    c.method<&KVTableViewController::viewForHeaderInSection>("tableView:viewForHeaderInSection:");
    c.method<&KVTableViewController::cellForRowAtIndexPath>("tableView:cellForRowAtIndexPath:");
    c.method<&KVTableViewController::sectionDoubleTapRecognizer>("sectionDoubleTapRecognizer:");
    c.method<&KVTableViewController::sectionLongPressRecognizer>("sectionLongPressRecognizer:");
    c.method<&KVTableViewController::notificationSectionSingleTapRecognizer>("notificationSectionSingleTapRecognizer:");
    c.method<&KVTableViewController::eventSectionSingleTapRecognizer>("eventSectionSingleTapRecognizer:");
    c.method<&KVTableViewController::eventRowSingleTapRecognizer>("eventRowSingleTapRecognizer:");
    c.method<&KVTableViewController::notificationRowSingleTapRecognizer>("notificationRowSingleTapRecognizer:");
    c.method<&KVTableViewController::notificationFooterViewSingleTapRecognizer>("notificationFooterViewSingleTapRecognizer:");
    c.method<&KVTableViewController::showEventDisplayViewForEventItem>("showEventDisplayViewForEventItem:");
    c.method<&KVTableViewController::showNotificationDisplayViewForNotificationRow>("showNotificationDisplayViewForNotificationRow:");
}

// The overlays are reached by name, as the host could reach them.
static NSObject* overlayNamed(const char* name) { return objc::send<NSObject*>(objc::objc_getClass(name), OBJC_SEL("sharedInstance")); }

KVTableViewController::KVTableViewController()
{
    m_settings = KVSettings::sharedInstance();
    auto bullet = UIImage::imageWithContentsOfFile(kavelinBundleImagePath("Bullet"));
    m_bulletImage = CVImageFactory::imageSetScale(bullet.get(), CGSizeMake(7.5, 7.5));
    m_timeStampTransparency = 1.0;
    m_calveraSectionHeaderTransparency = m_settings->calveraStrongerColorEnabled() ? 0.3 : 0.1;
    m_calveraRowTransparencyWhenAutoColored = m_calveraSectionHeaderTransparency / 2;
    m_notaraSectionHeaderTransparency = m_settings->notaraStrongerColorEnabled() ? 0.3 : 0.1;
    m_notaraRowTransparencyWhenAutoColored = m_notaraSectionHeaderTransparency / 2;
    m_sectionsCollapsedState = NSDictionary::create();
    m_sectionsColorData = NSDictionary::create();

    m_tableView = UITableView::create(CGRectZero, UITableViewStyleGrouped);
    m_tableView->setName("tableView");
    m_tableView->setDataSource(this);
    m_tableView->setTableDelegate(this);
    m_tableView->setShowsVerticalScrollIndicator(false);
    m_tableView->setBackgroundColor(UIColor::clearColor());
    m_tableView->setSeparatorColor(UIColor::clearColor());
    m_tableView->setSeparatorStyle(UITableViewCellSeparatorStyleNone);
    m_tableView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    m_tableView->setAlwaysBounceVertical(false);
    m_tableView->setAllowsSelection(false);
    setView(m_tableView.get());

    // The overlays exist before the first tap.
    overlayNamed("KVSingleEventDisplayView");
    overlayNamed("KVSingleNotificationDisplayView");
    overlayNamed("KVClearAllNotificationsDisplayView");
}

// MARK: Reload pipeline

struct KVTableViewController::Pipeline {
    StrongId store;
    // Numbers this pipeline's sections; each pipeline has its own.
    int sectionCounter { 1 };
    RefPtr<NSDate> now;
    RefPtr<NSDate> end;
};

static double secondsFrom(const NSDate* from, const NSDate* to)
{
    if (!from || !to)
        return 0;
    return to->timeIntervalSinceReferenceDate() - from->timeIntervalSinceReferenceDate();
}

void KVTableViewController::reloadTableViewData()
{
    if (m_isCurrentlyReloadingData)
        return;
    m_isCurrentlyReloadingData = true;
    m_eventData = NSDictionary::create();
    m_notificationData = NSDictionary::create();
    m_notificationSectionsData = NSDictionary::create();
    m_secondsUntilNextEvent = -1;
    m_nextEventType = nullptr;
    m_hasAnyReminders = false;
    m_hasAnyEvents = false;
    m_hasAnyNotifications = false;
    m_notificationCount = 0;

    auto pipeline = std::make_shared<Pipeline>();
    pipeline->store = objc::alloc(objc::objc_getClass("EKEventStore"));
    pipeline->now = NSDate::date();
    // Calendar days, so that a change to summer time keeps the wall-clock end.
    pipeline->end = NSCalendar::currentCalendar()->dateByAddingUnit(NSCalendarUnitDay, m_settings->calveraDaysFromNow(), pipeline->now.get(), 0);
    if (!pipeline->end)
        pipeline->end = pipeline->now;
    RefPtr<KVTableViewController> protect(this);
    dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), [protect, pipeline] { protect->fetchReminders(pipeline); });
}

void KVTableViewController::forceReloadTableViewData()
{
    m_isCurrentlyReloadingData = false;
    objc::send(this, OBJC_SEL("reloadTableViewData"));
}

void KVTableViewController::fetchReminders(std::shared_ptr<Pipeline> pipeline)
{
    StrongId predicate = objc::send<StrongId>(pipeline->store, OBJC_SEL("predicateForIncompleteRemindersWithDueDateStarting:ending:calendars:"),
        static_cast<NSObject*>(pipeline->now.get()), static_cast<NSObject*>(pipeline->end.get()), static_cast<NSObject*>(nullptr));
    if (!predicate) {
        // Without reminders nothing else is loaded either: the table shows
        // the emptied data and the pipeline ends here.
        m_tableView->reloadData();
        m_isCurrentlyReloadingData = false;
        return;
    }
    RefPtr<KVTableViewController> protect(this);
    std::function<void(StrongId)> completion = [protect, pipeline](StrongId reminders) {
        dispatch_async(dispatch_get_main_queue(), [protect, pipeline, reminders] { protect->finishReload(pipeline, reminders); });
    };
    objc::send(pipeline->store, OBJC_SEL("fetchRemindersMatchingPredicate:completion:"), predicate.get(), completion);
}

void KVTableViewController::finishReload(std::shared_ptr<Pipeline> pipeline, StrongId reminders)
{
    RefPtr<KVTableViewController> protect(this);
    loadReminders(*pipeline, reminders);
    loadEvents(*pipeline);
    loadNotifications(*pipeline);
    m_tableView->reloadData();
    m_isCurrentlyReloadingData = false;
    m_hasLoadedDataAtLeastOnce = true;
}

// Items of the array, sorted by a date (null dates first, as Foundation
// sorts nil), ties kept in their order.
static std::vector<StrongId> sortedByDate(const NSArray* items, objc::SEL dateSelector)
{
    std::vector<std::pair<double, StrongId>> keyed;
    keyed.reserve(items->count());
    for (auto& item : items->objects()) {
        if (!item)
            continue;
        auto date = objc::send<RefPtr<NSDate>>(item, dateSelector);
        keyed.emplace_back(date ? date->timeIntervalSinceReferenceDate() : -INFINITY, item);
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](auto& a, auto& b) { return a.first < b.first; });
    std::vector<StrongId> sorted;
    sorted.reserve(keyed.size());
    for (auto& [date, item] : keyed)
        sorted.push_back(std::move(item));
    return sorted;
}

static RefPtr<KVEventItem> makeEventItem(NSObject* calendarItem) { return KVEventItem::alloc()->initFromCalendarItem(calendarItem); }

void KVTableViewController::loadReminders(Pipeline& pipeline, StrongId found)
{
    auto* reminders = dynamic_cast<NSArray*>(found.get());
    if (!reminders || !reminders->count())
        return;
    auto items = NSArray::create();
    long limit = m_settings->calveraMaxReminders();
    for (auto& reminder : sortedByDate(reminders, OBJC_SEL("dueDate"))) {
        if (static_cast<long>(items->count()) >= limit)
            break;
        items->addObject(makeEventItem(reminder.get()));
    }
    // A limit of 0 keeps nothing: no section, and nothing counts as found.
    if (!items->count())
        return;
    m_hasAnyReminders = true;
    m_eventData->setObject(items, std::to_string(pipeline.sectionCounter++));
    auto* first = static_cast<KVEventItem*>(items->objectAtIndex(0).get());
    m_secondsUntilNextEvent = truncatedToInteger<int>(secondsFrom(pipeline.now.get(), first->date().get()));
    m_nextEventType = NSString::create("reminder");
}

void KVTableViewController::loadEvents(Pipeline& pipeline)
{
    StrongId predicate = objc::send<StrongId>(pipeline.store, OBJC_SEL("predicateForEventsWithStartDate:endDate:calendars:"),
        static_cast<NSObject*>(pipeline.now.get()), static_cast<NSObject*>(pipeline.end.get()), static_cast<NSObject*>(nullptr));
    if (!predicate)
        return;
    auto events = objc::castRef<NSArray>(objc::send<StrongId>(pipeline.store, OBJC_SEL("eventsMatchingPredicate:"), predicate.get()));
    if (!events || !events->count())
        return;

    auto kept = NSArray::create();
    long limit = m_settings->calveraMaxEvents();
    double now = pipeline.now->timeIntervalSinceReferenceDate();
    // The setting is read once per reload and each calendar's title matched
    // once: a full calendar has thousands of events and a few calendars,
    // which the store shares among its events. Each entry holds its
    // calendar, so that no key can be a freed and reused address.
    struct CalendarMatch {
        StrongId calendar;
        bool hidden { false };
    };
    std::vector<std::string> blacklist = calendarBlacklist();
    std::unordered_map<const NSObject*, CalendarMatch> hiddenCalendars;
    for (auto& event : sortedByDate(events.get(), OBJC_SEL("startDate"))) {
        StrongId calendar = objc::send<StrongId>(event, OBJC_SEL("calendar"));
        // An event without a calendar has no title to match (nil is in no list).
        if (calendar) {
            auto [known, added] = hiddenCalendars.try_emplace(calendar.get(), CalendarMatch { calendar });
            if (added) {
                std::string title = KVScheduleTexts::normalizedCalendarTitle(objc::send<std::string>(calendar, OBJC_SEL("title")));
                known->second.hidden = std::find(blacklist.begin(), blacklist.end(), title) != blacklist.end();
            }
            if (known->second.hidden)
                continue;
        }
        auto endDate = objc::send<RefPtr<NSDate>>(event, OBJC_SEL("endDate"));
        if (endDate && now >= endDate->timeIntervalSinceReferenceDate())
            continue;
        if (static_cast<long>(kept->count()) >= limit)
            break;
        auto item = makeEventItem(event.get());
        if (item->date() && now > item->date()->timeIntervalSinceReferenceDate())
            item->setIsNow(true);
        kept->addObject(item);
    }
    if (!kept->count())
        return;
    m_hasAnyEvents = true;
    m_eventData->setObject(kept, std::to_string(pipeline.sectionCounter++));

    int eventsTime = 0;
    for (auto& object : kept->objects()) {
        auto* item = static_cast<KVEventItem*>(object.get());
        if (!item->isNow()) {
            eventsTime = truncatedToInteger<int>(secondsFrom(pipeline.now.get(), item->date().get()));
            break;
        }
    }
    if (m_secondsUntilNextEvent == -1 || eventsTime < m_secondsUntilNextEvent) {
        m_secondsUntilNextEvent = eventsTime;
        m_nextEventType = NSString::create("event");
        if (m_hasAnyReminders) {
            // The sooner kind comes first.
            std::string earlier = std::to_string(pipeline.sectionCounter - 2);
            std::string later = std::to_string(pipeline.sectionCounter - 1);
            StrongId reminders = m_eventData->objectForKey(earlier);
            m_eventData->setObject(m_eventData->objectForKey(later), earlier);
            m_eventData->setObject(reminders, later);
        }
    }
}

void KVTableViewController::loadNotifications(Pipeline& pipeline)
{
    pipeline.sectionCounter = 1;
    auto catalogue = CVNotificationsProvider::currentNotificationsCatalogue();
    if (!catalogue || !catalogue->sections())
        return;
    for (auto& object : catalogue->sections()->objects()) {
        auto* section = dynamic_cast<CVNotificationSection*>(object.get());
        if (!section || !section->rows())
            continue;
        auto rows = NSArray::create();
        for (auto& row : section->rows()->objects()) {
            if (!row)
                continue;
            rows->addObject(row);
            ++m_notificationCount;
        }
        if (!rows->count())
            continue;
        m_hasAnyNotifications = true;
        std::string key = std::to_string(pipeline.sectionCounter++);
        m_notificationData->setObject(rows, key);
        m_notificationSectionsData->setObject(StrongId(section), key);
    }
}

void KVTableViewController::refreshTableViewLayout()
{
    if (m_isCurrentlyReloadingData)
        return;
    m_tableView->reloadData();
}

std::string KVTableViewController::timeUntilNextEvent() const
{
    return KVScheduleTexts::timeUntilText(m_secondsUntilNextEvent, NSDate::date().get());
}

std::vector<std::string> KVTableViewController::calendarBlacklist() const
{
    // Held while it is read: a fallback string has no other owner.
    StrongId stored = m_settings->calendarBlacklist();
    auto* setting = dynamic_cast<NSString*>(stored.get());
    return KVScheduleTexts::calendarBlacklist(setting ? setting->string() : std::string());
}

void KVTableViewController::changeFrame(CGRect panelBounds)
{
    KVView* panel = KVView::currentPanel();
    if (!panel)
        return;
    double w = panelBounds.size.width;
    double h = panelBounds.size.height;
    // The clock label is read by name, as the host-facing code does.
    auto* clockLabel = objc::cast<UIView>(objc::object_getIvar(panel, "_timeDateLabel"));
    CGRect clock = clockLabel ? clockLabel->frame() : CGRectZero;
    double top = std::trunc(clock.origin.y + 1.5 * clock.size.height);
    double height = std::trunc(h - top - 10);
    auto* music = objc::send<UIView*>(panel, OBJC_SEL("melodraView"));
    auto* launcher = objc::send<UIView*>(panel, OBJC_SEL("appLauncherView"));
    bool musicHidden = !music || music->isHidden();
    if (m_settings->lanceraEnabled()) {
        double bottom = musicHidden ? h - (launcher ? launcher->frame().origin.y : h) + 5 : h - music->frame().origin.y + 10;
        height = std::trunc(height - bottom);
    } else if (musicHidden) {
        if (m_settings->location() == KVPanelLocation::NotificationCenter)
            height = std::trunc(height - 0.05 * std::max(w, h));
    } else {
        height = std::trunc(height - (h - music->frame().origin.y + 10));
    }
    m_tableView->setFrame(CGRectMake(20, top, w - 40, height));
}

// MARK: Sections

long KVTableViewController::sectionForEventsHeader() const
{
    if (!m_settings->calveraEnabled())
        return missingSection;
    return m_settings->nothingScheduledLabelEnabled() || hasAnythingScheduled() ? 0 : missingSection;
}

long KVTableViewController::sectionForNotificationsHeader() const
{
    if (!m_settings->notaraEnabled())
        return missingSection;
    if (!m_settings->calveraEnabled())
        return 0;
    if (!m_settings->nothingScheduledLabelEnabled() && !hasAnythingScheduled())
        return 0;
    return 1 + (m_hasAnyEvents ? 1 : 0) + (m_hasAnyReminders ? 1 : 0);
}

long KVTableViewController::sectionForNotificationsFooter() const
{
    if (!m_settings->notaraEnabled() || !m_hasAnyNotifications || !m_settings->dismissAllNotificationsButtonEnabled())
        return missingSection;
    return numberOfSectionsInTableView(m_tableView.get()) - 1;
}

long KVTableViewController::numberOfSectionsInTableView(UITableView*) const
{
    long eventSections = m_eventData ? static_cast<long>(m_eventData->count()) : 0;
    long sections = sectionForEventsHeader() != missingSection ? eventSections + 1 : 0;
    if (!m_settings->notaraEnabled() || (!m_settings->noNotificationsLabelEnabled() && !m_hasAnyNotifications))
        return sections;
    long appSections = m_notificationData ? static_cast<long>(m_notificationData->count()) : 0;
    sections += appSections + 1;
    if (m_hasAnyNotifications && m_settings->dismissAllNotificationsButtonEnabled())
        ++sections;
    return sections;
}

bool KVTableViewController::isCollapsed(const std::string& identifier) const
{
    return objc::send<bool>(m_sectionsCollapsedState->objectForKey(identifier), OBJC_SEL("boolValue"));
}

void KVTableViewController::changeCollapseStateOfSectionWithIdentifier(const std::string& identifier)
{
    m_sectionsCollapsedState->setObject(NSNumber::numberWithBool(!isCollapsed(identifier)), identifier);
    objc::send(this, OBJC_SEL("refreshTableViewLayout"));
}

RefPtr<NSArray> KVTableViewController::eventItemsInSection(long section) const
{
    if (!m_eventData)
        return nullptr;
    auto items = objc::castRef<NSArray>(m_eventData->objectForKey(std::to_string(section)));
    return items && items->count() ? items : nullptr;
}

RefPtr<NSArray> KVTableViewController::notificationRowsInSection(long section) const
{
    long header = sectionForNotificationsHeader();
    if (!m_notificationData || header == missingSection || section <= header)
        return nullptr;
    auto rows = objc::castRef<NSArray>(m_notificationData->objectForKey(std::to_string(section - header)));
    return rows && rows->count() ? rows : nullptr;
}

long KVTableViewController::numberOfRowsInSection(UITableView*, long section) const
{
    long eventsHeader = sectionForEventsHeader();
    long notificationsHeader = sectionForNotificationsHeader();
    if (section == eventsHeader || section == notificationsHeader)
        return 0;
    if (eventsHeader != missingSection && section > eventsHeader && section < notificationsHeader) {
        auto items = eventItemsInSection(section);
        if (!items)
            return 0;
        auto* first = dynamic_cast<KVEventItem*>(items->objectAtIndex(0).get());
        if (!first || isCollapsed(first->typeString()))
            return 0;
        return static_cast<long>(items->count()) - 1;
    }
    if (notificationsHeader == missingSection || section < notificationsHeader)
        return 0;
    auto rows = notificationRowsInSection(section);
    if (!rows)
        return 0;
    auto* record = dynamic_cast<CVNotificationSection*>(m_notificationSectionsData->objectForKey(std::to_string(section - notificationsHeader)).get());
    if (!record || !record->sectionApp() || isCollapsed(record->sectionID()))
        return 0;
    return static_cast<long>(rows->count());
}

double KVTableViewController::heightForHeaderInSection(UITableView*, long section) const
{
    if (section == sectionForEventsHeader() || section == sectionForNotificationsHeader())
        return cellHeight() * 0.65;
    return cellHeight();
}

double KVTableViewController::heightForFooterInSection(UITableView*, long) const { return cellHeight() * 0.25; }

double KVTableViewController::heightForRowAtIndexPath(UITableView*, NSIndexPath*) const { return cellHeight(); }

RefPtr<UIView> KVTableViewController::viewForHeaderInSection(UITableView*, long section)
{
    long eventsHeader = sectionForEventsHeader();
    long notificationsHeader = sectionForNotificationsHeader();
    if (section == eventsHeader)
        return sectionHeaderViewForType("events");
    if (section == notificationsHeader)
        return sectionHeaderViewForType("notifications");
    if (section == sectionForNotificationsFooter() && m_settings->dismissAllNotificationsButtonEnabled())
        return notificationFooterView();
    if (eventsHeader != missingSection && section > eventsHeader && section < notificationsHeader)
        return eventHeaderViewAtSection(section);
    if (notificationsHeader == missingSection || section <= notificationsHeader)
        return nullptr;
    return notificationHeaderViewAtSection(section);
}

// MARK: Views

static RefPtr<UILabel> makeLabel(const char* name, CGRect frame, double fontSize, RefPtr<UIColor> color, int lines)
{
    auto label = UILabel::create(frame);
    label->setName(name);
    label->setFont(UIFont::fontWithName(lightFont, fontSize));
    label->setTextColor(std::move(color));
    label->setNumberOfLines(lines);
    label->setBackgroundColor(UIColor::clearColor());
    label->setUserInteractionEnabled(false);
    return label;
}

// The time at the right of a header or row: 15 % of the width, 10 points
// from the right edge.
static RefPtr<UILabel> makeTimeLabel(CGSize cell, double top, double fontSize, RefPtr<UIColor> color, double alpha)
{
    double width = 0.15 * cell.width;
    auto label = makeLabel("_timeLabel", CGRectMake(cell.width - 10 - width, top, width, cell.height), fontSize, std::move(color), 1);
    label->setTextAlignment(NSTextAlignmentLeft);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setAlpha(alpha);
    return label;
}

static RefPtr<UIView> filledBackground(CGSize size, UIColor* color, double alpha)
{
    auto background = UIView::create(CGRectMake(0, 0, size.width, size.height));
    background->setName("backgroundView");
    RefPtr<UIColor> base = color ? RefPtr<UIColor>(color) : UIColor::blackColor();
    background->setBackgroundColor(base->colorWithAlphaComponent(alpha));
    background->setUserInteractionEnabled(false);
    return background;
}

RefPtr<UIView> KVTableViewController::sectionHeaderViewForType(const std::string& type) const
{
    CGSize size = CGSizeMake(m_tableView->bounds().size.width, cellHeight());
    auto view = UIView::create(CGRectMake(0, 0, size.width, size.height));
    view->setName(type == "events" ? "eventsHeaderView" : "notificationsHeaderView");
    view->setBackgroundColor(UIColor::clearColor());
    auto label = makeLabel("_headerLabel", view->bounds(), 14, m_settings->themeColor(), 1);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setTextAlignment(NSTextAlignmentCenter);
    std::string text;
    if (type == "events") {
        if (!m_hasLoadedDataAtLeastOnce)
            text = "Loading schedule...";
        else if (!hasAnythingScheduled())
            text = KVScheduleTexts::nothingScheduledText(m_settings->calveraDaysFromNow());
        else if (m_settings->somethingScheduledLabelEnabled())
            text = "Your next " + (m_nextEventType ? m_nextEventType->string() : std::string()) + " is " + timeUntilNextEvent();
    } else {
        if (!m_hasLoadedDataAtLeastOnce)
            text = "Loading notifications...";
        else if (!m_hasAnyNotifications)
            text = "No notifications";
        else if (m_settings->hasNotificationsLabelEnabled())
            text = m_notificationCount == 1 ? "You have 1 notification" : NSString::format("You have %d notifications", m_notificationCount);
    }
    label->setText(text);
    view->addSubview(label.get());
    return view;
}

static const char* appIdentifierForType(const std::string& type)
{
    if (type == "event")
        return "com.apple.mobilecal";
    if (type == "reminder")
        return "com.apple.reminders";
    return nullptr;
}

static RefPtr<CVAppItem> appItemForType(const std::string& type)
{
    const char* identifier = appIdentifierForType(type);
    return identifier ? CVAppItem::alloc()->initFromIdentifier(identifier, false) : nullptr;
}

RefPtr<UIColor> KVTableViewController::automaticColor(const std::string& identifier, const std::function<RefPtr<UIColor>()>& compute)
{
    if (auto cached = objc::castRef<UIColor>(m_sectionsColorData->objectForKey(identifier)))
        return cached;
    RefPtr<UIColor> color = compute();
    if (color)
        m_sectionsColorData->setObject(color, identifier);
    return color;
}

RefPtr<UIColor> KVTableViewController::automaticEventColor(const std::string& type)
{
    return automaticColor(type, [&]() -> RefPtr<UIColor> {
        auto app = appItemForType(type);
        UIImage* icon = app ? app->iconImage() : nullptr;
        return icon ? icon->mergedColor() : nullptr;
    });
}

static void addTapRecognizer(UIView* view, NSObject* target, objc::SEL action)
{
    view->addGestureRecognizer(make<UITapGestureRecognizer>(target, action).get());
}

RefPtr<UIView> KVTableViewController::eventHeaderViewAtSection(long section)
{
    auto items = eventItemsInSection(section);
    auto* first = items ? dynamic_cast<KVEventItem*>(items->objectAtIndex(0).get()) : nullptr;
    if (!first)
        return nullptr;
    std::string type = first->typeString();
    bool collapsed = isCollapsed(type);
    long count = static_cast<long>(items->count());

    std::string title = first->titleString();
    if (collapsed && count >= 2)
        title = NSString::format("(%ld) %s", count - 1, title.c_str());
    if (m_settings->calveraPrivacyModeEnabled())
        title = type;
    else if (first->isNow())
        title += " (active)";

    auto app = appItemForType(type);
    RefPtr<UIColor> autoColor = m_settings->autoColorEventSectionEnabled() ? automaticEventColor(type) : nullptr;

    auto cell = make<KVTableViewSectionHeaderCell>(UITableViewCellStyleDefault, std::string(), section, type);
    cell->setFrame(CGRectMake(0, 0, m_tableView->bounds().size.width, cellHeight()));
    cell->setBackgroundColor(UIColor::clearColor());
    auto singleTap = make<UITapGestureRecognizer>(this, OBJC_SEL("eventSectionSingleTapRecognizer:"));
    cell->addGestureRecognizer(singleTap.get());
    if (m_settings->calveraCollapseEnabled()) {
        auto doubleTap = make<UITapGestureRecognizer>(this, OBJC_SEL("sectionDoubleTapRecognizer:"));
        doubleTap->setNumberOfTapsRequired(2);
        cell->addGestureRecognizer(doubleTap.get());
        singleTap->requireGestureRecognizerToFail(doubleTap.get());
        cell->addGestureRecognizer(make<UILongPressGestureRecognizer>(this, OBJC_SEL("sectionLongPressRecognizer:")).get());
    }
    bool allCorners = collapsed || count == 1;
    cell->layer().setRoundedCornerMask(allCorners ? CALayer::AllCorners : CALayer::TopLeft | CALayer::TopRight, 5);

    CGSize size = cell->bounds().size;
    cell->setBackgroundView(filledBackground(size, autoColor.get(), m_calveraSectionHeaderTransparency));

    double iconSide = 0.6 * size.height;
    if (auto* icon = app ? app->iconImageView() : nullptr) {
        icon->setName("_iconImageView");
        icon->setFrame(CGRectMake(5, 5, iconSide, iconSide));
        icon->setUserInteractionEnabled(false);
        cell->addSubview(icon);
    }
    double titleX = iconSide + 0.04 * size.width;
    auto titleLabel = makeLabel("_titleLabel", CGRectMake(titleX, -2, size.width - 1.5 * 0.15 * size.width - 10 - iconSide, size.height), 14, m_settings->themeColor(), 1);
    titleLabel->setText(title);
    cell->addSubview(titleLabel.get());

    RefPtr<UIColor> timeColor = m_settings->calveraCalendarColorsEnabled() && first->color() ? first->color() : m_settings->themeColor();
    auto timeLabel = makeTimeLabel(size, -2, 12, timeColor, m_timeStampTransparency);
    timeLabel->setText(KVScheduleTexts::timeLabelText(first->date().get(), m_settings->militaryTime()));
    cell->addSubview(timeLabel.get());
    return cell;
}

static std::string notGroupedWarning()
{
    if (systemVersionAtLeast("8.0") && !systemVersionAtLeast("9.0"))
        return "Please enable sort manually in settings->notifications to view your notifications";
    if (systemVersionAtLeast("9.0") && !systemVersionAtLeast("10.0"))
        return "Please enable group by app in settings->notifications to view your notifications";
    return {};
}

RefPtr<UIView> KVTableViewController::notificationHeaderViewAtSection(long section)
{
    long k = section - sectionForNotificationsHeader();
    auto* record = dynamic_cast<CVNotificationSection*>(m_notificationSectionsData ? m_notificationSectionsData->objectForKey(std::to_string(k)).get() : nullptr);
    if (!record)
        return nullptr;
    CGSize size = CGSizeMake(m_tableView->bounds().size.width, cellHeight());
    if (!record->sectionApp()) {
        if (k != 1)
            return nullptr;
        auto warning = UIView::create(CGRectMake(0, 0, size.width, size.height));
        warning->setName("_groupByAppWarningView");
        warning->setBackgroundColor(UIColor::redColor());
        warning->setAlpha(0.5);
        warning->layer().setCornerRadius(5);
        warning->setUserInteractionEnabled(false);
        auto label = makeLabel("_warningLabel", warning->bounds(), 12, UIColor::whiteColor(), 2);
        label->setTextAlignment(NSTextAlignmentCenter);
        label->setAdjustsFontSizeToFitWidth(true);
        label->setText(notGroupedWarning());
        warning->addSubview(label.get());
        return warning;
    }
    auto rows = notificationRowsInSection(section);
    if (!rows)
        return nullptr;
    const std::string& identifier = record->sectionID();
    bool collapsed = isCollapsed(identifier);
    std::string title = record->sectionApp()->displayName();
    if (collapsed)
        title = NSString::format("(%ld) %s", static_cast<long>(rows->count()), title.c_str());
    RefPtr<UIColor> autoColor;
    if (m_settings->autoColorNotificationSectionEnabled()) {
        autoColor = automaticColor(identifier, [&]() -> RefPtr<UIColor> {
            auto icon = record->sectionIcon();
            return icon ? icon->mergedColor() : nullptr;
        });
    }

    auto cell = make<KVTableViewSectionHeaderCell>(UITableViewCellStyleDefault, std::string(), section, identifier);
    cell->setFrame(CGRectMake(0, 0, size.width, size.height));
    cell->setBackgroundColor(UIColor::clearColor());
    // A single tap on an app header always collapses or expands it.
    addTapRecognizer(cell.get(), this, OBJC_SEL("notificationSectionSingleTapRecognizer:"));
    if (m_settings->notaraCollapseEnabled()) {
        auto doubleTap = make<UITapGestureRecognizer>(this, OBJC_SEL("sectionDoubleTapRecognizer:"));
        doubleTap->setNumberOfTapsRequired(2);
        cell->addGestureRecognizer(doubleTap.get());
        cell->addGestureRecognizer(make<UILongPressGestureRecognizer>(this, OBJC_SEL("sectionLongPressRecognizer:")).get());
    }
    auto dismiss = KVNotificationSectionDismissButton::dismissButtonWithFrame(CGRectMake(size.width - size.height - 10, 2, size.height, size.height), record);
    cell->addSubview(dismiss.get());
    cell->layer().setRoundedCornerMask(collapsed ? CALayer::AllCorners : CALayer::TopLeft | CALayer::TopRight, 5);
    cell->setBackgroundView(filledBackground(size, autoColor.get(), m_notaraSectionHeaderTransparency));

    double iconSide = 0.6 * size.height;
    auto icon = record->sectionAppIconImageViewWithSize(iconSide);
    icon->setName("_iconImageView");
    icon->setFrame(CGRectMake(5, 5, icon->frame().size.width, icon->frame().size.height));
    icon->setUserInteractionEnabled(false);
    cell->addSubview(icon.get());

    double iconWidth = icon->frame().size.width;
    auto titleLabel = makeLabel("_titleLabel", CGRectMake(iconWidth + 0.04 * size.width, -2, size.width - iconWidth - 5, size.height), 14, m_settings->themeColor(), 1);
    titleLabel->setText(title);
    cell->addSubview(titleLabel.get());
    return cell;
}

RefPtr<UIView> KVTableViewController::notificationFooterView()
{
    CGRect frame = CGRectMake(0, 0, m_tableView->bounds().size.width, cellHeight());
    auto footer = UIView::create(frame);
    footer->setName("notificationFooterView");
    footer->setBackgroundColor(UIColor::clearColor());
    footer->layer().setCornerRadius(5);
    footer->setClipsToBounds(true);
    auto tint = UIView::create(footer->bounds());
    tint->setName("_tintView");
    tint->setBackgroundColor(UIColor::redColor());
    tint->setAlpha(0.1);
    tint->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    tint->setUserInteractionEnabled(false);
    footer->addSubview(tint.get());
    auto label = makeLabel("_footerLabel", footer->bounds(), 14, m_settings->themeColor(), 1);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setText("Dismiss All Notifications");
    label->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    footer->addSubview(label.get());
    addTapRecognizer(footer.get(), this, OBJC_SEL("notificationFooterViewSingleTapRecognizer:"));
    return footer;
}

// MARK: Rows

RefPtr<UITableViewCell> KVTableViewController::blankCell() const
{
    auto cell = make<UITableViewCell>(UITableViewCellStyleDefault, std::string());
    cell->setBackgroundColor(UIColor::clearColor());
    return cell;
}

RefPtr<UITableViewCell> KVTableViewController::cellForRowAtIndexPath(UITableView*, NSIndexPath* indexPath)
{
    if (!indexPath)
        return blankCell();
    long section = indexPath->section();
    long eventsHeader = sectionForEventsHeader();
    long notificationsHeader = sectionForNotificationsHeader();
    if (eventsHeader != missingSection && section > eventsHeader && section < notificationsHeader)
        return cellForEventAtIndexPath(indexPath);
    if (notificationsHeader == missingSection || section <= notificationsHeader)
        return blankCell();
    return cellForNotificationAtIndexPath(indexPath);
}

static RefPtr<KVTableViewRowCell> makeRowCell(NSIndexPath* indexPath, double width, double height)
{
    auto cell = make<KVTableViewRowCell>(UITableViewCellStyleDefault, std::string(), RefPtr<NSIndexPath>(indexPath));
    cell->setFrame(CGRectMake(0, 0, width, height));
    cell->setBackgroundColor(UIColor::clearColor());
    return cell;
}

RefPtr<UITableViewCell> KVTableViewController::cellForEventAtIndexPath(NSIndexPath* indexPath)
{
    auto items = eventItemsInSection(indexPath->section());
    long index = indexPath->row() + 1;
    if (!items || index < 1 || index >= static_cast<long>(items->count()))
        return blankCell();
    auto* item = dynamic_cast<KVEventItem*>(items->objectAtIndex(static_cast<size_t>(index)).get());
    if (!item)
        return blankCell();
    std::string type = item->typeString();
    bool autoColored = m_settings->autoColorEventSectionEnabled();
    RefPtr<UIColor> autoColor = autoColored ? automaticEventColor(type) : nullptr;

    auto cell = makeRowCell(indexPath, m_tableView->bounds().size.width, cellHeight());
    addTapRecognizer(cell.get(), this, OBJC_SEL("eventRowSingleTapRecognizer:"));
    CGSize size = cell->bounds().size;
    cell->setBackgroundView(filledBackground(size, autoColored ? autoColor.get() : nullptr, autoColored ? m_calveraRowTransparencyWhenAutoColored : m_calveraSectionHeaderTransparency));
    if (index == static_cast<long>(items->count()) - 1)
        cell->layer().setRoundedCornerMask(CALayer::BottomLeft | CALayer::BottomRight, 5);

    double side = 0.6 * size.height;
    auto bulletBox = UIView::create(CGRectMake(5, 5, side, side));
    bulletBox->setName("_bulletView");
    bulletBox->setBackgroundColor(UIColor::clearColor());
    bulletBox->setUserInteractionEnabled(false);
    RefPtr<UIImage> bullet = m_bulletImage;
    if (m_settings->calveraCalendarColorsEnabled() && item->color())
        bullet = CVImageFactory::imageSetColor(m_bulletImage.get(), item->color().get());
    auto bulletView = make<UIImageView>(bullet);
    bulletView->setName("_bulletImageView");
    CGSize bulletSize = bullet ? bullet->size() : CGSizeMake(0, 0);
    bulletView->setFrame(CGRectMake((side - bulletSize.width) / 2, (side - bulletSize.height) / 2, bulletSize.width, bulletSize.height));
    bulletView->setUserInteractionEnabled(false);
    bulletBox->addSubview(bulletView.get());
    cell->addSubview(bulletBox.get());

    std::string title = m_settings->calveraPrivacyModeEnabled() ? type : item->titleString() + (item->isNow() ? " (active)" : "");
    auto titleLabel = makeLabel("_titleLabel", CGRectMake(1.04 * side + 0.04 * size.width, -3, size.width - 1.7 * 0.15 * size.width - 10, size.height), 12, m_settings->themeColor(), 2);
    titleLabel->setText(title);
    cell->addSubview(titleLabel.get());

    auto timeLabel = makeTimeLabel(size, -3, 12, m_settings->themeColor(), m_timeStampTransparency);
    timeLabel->setText(KVScheduleTexts::timeLabelText(item->date().get(), m_settings->militaryTime()));
    cell->addSubview(timeLabel.get());
    return cell;
}

RefPtr<UITableViewCell> KVTableViewController::cellForNotificationAtIndexPath(NSIndexPath* indexPath)
{
    auto rows = notificationRowsInSection(indexPath->section());
    long index = indexPath->row();
    if (!rows || index < 0 || index >= static_cast<long>(rows->count()))
        return blankCell();
    auto* row = dynamic_cast<CVNotificationRow*>(rows->objectAtIndex(static_cast<size_t>(index)).get());
    if (!row)
        return blankCell();
    bool autoColored = m_settings->autoColorNotificationSectionEnabled();
    RefPtr<UIColor> autoColor;
    if (autoColored) {
        autoColor = automaticColor(row->sectionID(), [&]() -> RefPtr<UIColor> {
            auto icon = row->icon();
            return icon ? icon->mergedColor() : nullptr;
        });
    }

    auto cell = makeRowCell(indexPath, m_tableView->bounds().size.width, cellHeight());
    addTapRecognizer(cell.get(), this, OBJC_SEL("notificationRowSingleTapRecognizer:"));
    CGSize size = cell->bounds().size;
    auto background = filledBackground(size, autoColored ? autoColor.get() : nullptr, autoColored ? m_notaraRowTransparencyWhenAutoColored : m_notaraSectionHeaderTransparency);
    if (index == static_cast<long>(rows->count()) - 1) {
        cell->layer().setRoundedCornerMask(CALayer::BottomLeft | CALayer::BottomRight, 5);
    } else {
        auto separator = UIView::create(CGRectMake(0, size.height - 5, size.width, 1));
        separator->setName("_separatorView");
        separator->setBackgroundColor(m_settings->themeColor());
        separator->setAlpha(0.25);
        background->addSubview(separator.get());
    }
    cell->setBackgroundView(background);

    std::string text = "notification";
    if (!m_settings->notaraPrivacyModeEnabled()) {
        auto title = row->title();
        auto message = row->message();
        text = KVScheduleTexts::notificationRowText(title ? std::optional(title->string()) : std::nullopt, row->attachmentImage() != nullptr,
            message ? std::optional(message->string()) : std::nullopt);
    }
    auto textLabel = makeLabel("_messageLabel", CGRectMake(0.04 * size.width, -3, size.width - 1.5 * 0.15 * size.width - 10, size.height), 12, m_settings->themeColor(), 2);
    textLabel->setText(text);
    cell->addSubview(textLabel.get());

    auto timeLabel = makeTimeLabel(size, -3, 12, m_settings->themeColor(), m_timeStampTransparency);
    timeLabel->setText(KVScheduleTexts::timeLabelText(row->date().get(), m_settings->militaryTime()));
    cell->addSubview(timeLabel.get());
    return cell;
}

// MARK: Taps

static KVTableViewSectionHeaderCell* headerCellOf(UIGestureRecognizer* recognizer)
{
    return recognizer ? dynamic_cast<KVTableViewSectionHeaderCell*>(recognizer->view()) : nullptr;
}

static KVTableViewRowCell* rowCellOf(UIGestureRecognizer* recognizer)
{
    return recognizer ? dynamic_cast<KVTableViewRowCell*>(recognizer->view()) : nullptr;
}

void KVTableViewController::sectionDoubleTapRecognizer(UIGestureRecognizer* recognizer)
{
    if (auto* header = headerCellOf(recognizer))
        objc::send(this, OBJC_SEL("changeCollapseStateOfSectionWithIdentifier:"), header->identifier());
}

void KVTableViewController::sectionLongPressRecognizer(UIGestureRecognizer* recognizer)
{
    auto* header = headerCellOf(recognizer);
    if (header && recognizer->state() == UIGestureRecognizerStateBegan)
        objc::send(this, OBJC_SEL("changeCollapseStateOfSectionWithIdentifier:"), header->identifier());
}

void KVTableViewController::notificationSectionSingleTapRecognizer(UIGestureRecognizer* recognizer)
{
    if (auto* header = headerCellOf(recognizer))
        objc::send(this, OBJC_SEL("changeCollapseStateOfSectionWithIdentifier:"), header->identifier());
}

void KVTableViewController::eventSectionSingleTapRecognizer(UIGestureRecognizer* recognizer)
{
    auto* header = headerCellOf(recognizer);
    auto items = header ? eventItemsInSection(header->section()) : nullptr;
    if (items)
        objc::send(this, OBJC_SEL("showEventDisplayViewForEventItem:"), items->objectAtIndex(0).get());
}

void KVTableViewController::eventRowSingleTapRecognizer(UIGestureRecognizer* recognizer)
{
    auto* cell = rowCellOf(recognizer);
    if (!cell || !cell->indexPath())
        return;
    auto items = eventItemsInSection(cell->indexPath()->section());
    long index = cell->indexPath()->row() + 1;
    if (items && index >= 1 && index < static_cast<long>(items->count()))
        objc::send(this, OBJC_SEL("showEventDisplayViewForEventItem:"), items->objectAtIndex(static_cast<size_t>(index)).get());
}

void KVTableViewController::showEventDisplayViewForEventItem(NSObject* item)
{
    if (!item || !m_settings->calveraOverlayEnabled())
        return;
    NSObject* overlay = overlayNamed("KVSingleEventDisplayView");
    objc::send(overlay, OBJC_SEL("updateEventItem:"), item);
    objc::send(overlay, OBJC_SEL("show"));
}

void KVTableViewController::showNotificationDisplayViewForNotificationRow(NSObject* row)
{
    NSObject* overlay = overlayNamed("KVSingleNotificationDisplayView");
    objc::send(overlay, OBJC_SEL("updateRow:"), row);
    objc::send(overlay, OBJC_SEL("show"));
}

void KVTableViewController::notificationRowSingleTapRecognizer(UIGestureRecognizer* recognizer)
{
    auto* cell = rowCellOf(recognizer);
    if (!cell || !cell->indexPath())
        return;
    // The data current at tap time: a reload since the cell was built may
    // have put another notification at this place, or none.
    auto rows = notificationRowsInSection(cell->indexPath()->section());
    long index = cell->indexPath()->row();
    if (!rows || index < 0 || index >= static_cast<long>(rows->count()))
        return;
    RefPtr<CVNotificationRow> row = objc::castRef<CVNotificationRow>(rows->objectAtIndex(static_cast<size_t>(index)));
    if (!row)
        return;
    if (m_settings->notaraOverlayEnabled())
        return objc::send(this, OBJC_SEL("showNotificationDisplayViewForNotificationRow:"), row.get());
    if (!m_settings->notaraLaunchEnabled())
        return;
    launchNotificationRow(row.get(), m_settings.get());
}

void KVTableViewController::notificationFooterViewSingleTapRecognizer(UIGestureRecognizer*)
{
    objc::send(overlayNamed("KVClearAllNotificationsDisplayView"), OBJC_SEL("show"));
}
