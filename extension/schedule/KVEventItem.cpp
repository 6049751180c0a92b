#include "KVEventItem.h"

OBJC_IMPLEMENT_CLASS(KVEventItem, NSObject)
{
    c.allocatable();
    c.method<&KVEventItem::initFromCalendarItem>("initFromCalendarItem:");
    c.method<&KVEventItem::isNow>("isNow");
    c.method<&KVEventItem::setIsNow>("setIsNow:");
    c.method<&KVEventItem::calendarItem>("calendarItem");
    c.method<&KVEventItem::type>("type");
    c.method<&KVEventItem::title>("title");
    c.method<&KVEventItem::date>("date");
    c.method<&KVEventItem::endDate>("endDate");
    c.method<&KVEventItem::color>("color");
    c.method<&KVEventItem::notes>("notes");
    c.method<&KVEventItem::location>("location");
}

RefPtr<KVEventItem> KVEventItem::initFromCalendarItem(NSObject* calendarItem)
{
    m_calendarItem = StrongId(calendarItem);
    m_title = objc::send<RefPtr<NSString>>(calendarItem, OBJC_SEL("title"));
    m_notes = objc::send<RefPtr<NSString>>(calendarItem, OBJC_SEL("notes"));
    m_location = objc::send<RefPtr<NSString>>(calendarItem, OBJC_SEL("location"));
    m_isNow = false;
    if (!calendarItem)
        return RefPtr<KVEventItem>(this);
    // The class itself, not a kind-of test: a subclass of either is neither.
    objc::Class* cls = calendarItem->isa();
    if (cls == objc::objc_getClass("EKReminder")) {
        m_type = NSString::create("reminder");
        m_date = objc::send<RefPtr<NSDate>>(calendarItem, OBJC_SEL("dueDate"));
    } else if (cls == objc::objc_getClass("EKEvent")) {
        m_type = NSString::create("event");
        m_date = objc::send<RefPtr<NSDate>>(calendarItem, OBJC_SEL("startDate"));
        m_endDate = objc::send<RefPtr<NSDate>>(calendarItem, OBJC_SEL("endDate"));
        StrongId calendar = objc::send<StrongId>(calendarItem, OBJC_SEL("calendar"));
        // The calendar's CGColor; this platform's colours stand for CGColorRef.
        if (auto color = objc::send<RefPtr<UIColor>>(calendar, OBJC_SEL("CGColor")))
            m_color = UIColor::colorWithRed(color->red(), color->green(), color->blue(), color->alpha());
    }
    return RefPtr<KVEventItem>(this);
}
