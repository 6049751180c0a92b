#include "NSTimeZone.h"

#include "ICUSupport.h"
#include "NSDate.h"

#include <map>
#include <memory>

OBJC_IMPLEMENT_CLASS(NSTimeZone, NSObject)
{
    c.classMethod<&NSTimeZone::defaultTimeZone>("defaultTimeZone");
    c.classMethod<&NSTimeZone::localTimeZone>("localTimeZone");
    c.classMethod<&NSTimeZone::systemTimeZone>("systemTimeZone");
    c.classMethod<&NSTimeZone::timeZoneWithName>("timeZoneWithName:");
    c.method<&NSTimeZone::name>("name");
    c.method<static_cast<long (NSTimeZone::*)() const>(&NSTimeZone::secondsFromGMT)>("secondsFromGMT");
}

namespace FoundationICU {

const icu::TimeZone& timeZone(const std::string& name)
{
    // Zones are immutable once made, so one per name serves every caller.
    static auto* zones = new std::map<std::string, std::unique_ptr<icu::TimeZone>>();
    auto it = zones->find(name);
    if (it != zones->end())
        return *it->second;
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(toUnicode(name)));
    // Unknown names are not kept, so that looking many up cannot grow the table.
    icu::UnicodeString id;
    if (!zone || *zone == icu::TimeZone::getUnknown() || zone->getID(id) == UCAL_UNKNOWN_ZONE_ID)
        return icu::TimeZone::getUnknown();
    return *zones->emplace(name, std::move(zone)).first->second;
}

} // namespace FoundationICU

static bool isKnownZone(const std::string& name)
{
    if (name.empty())
        return false;
    return FoundationICU::timeZone(name) != icu::TimeZone::getUnknown();
}

static std::string& defaultName()
{
    static auto* name = new std::string("UTC");
    return *name;
}

RefPtr<NSTimeZone> NSTimeZone::timeZoneWithName(const std::string& name)
{
    return isKnownZone(name) ? make<NSTimeZone>(name) : nullptr;
}

RefPtr<NSTimeZone> NSTimeZone::timeZoneForSecondsFromGMT(long seconds)
{
    long magnitude = seconds < 0 ? -seconds : seconds;
    if (magnitude >= 24 * 3600)
        return nullptr;
    char name[32];
    std::snprintf(name, sizeof name, "GMT%c%02ld:%02ld", seconds < 0 ? '-' : '+', magnitude / 3600, magnitude / 60 % 60);
    return make<NSTimeZone>(name);
}

RefPtr<NSTimeZone> NSTimeZone::defaultTimeZone() { return make<NSTimeZone>(defaultName()); }

bool NSTimeZone::setDefaultTimeZoneName(const std::string& name)
{
    if (!isKnownZone(name))
        return false;
    defaultName() = name;
    return true;
}

void NSTimeZone::setDefaultTimeZone(NSTimeZone* zone)
{
    if (zone)
        defaultName() = zone->name();
}

struct ZoneOffsets {
    int32_t raw { 0 };
    int32_t daylight { 0 };
};

static ZoneOffsets offsetsAt(const std::string& name, const NSDate* date)
{
    double when = date ? date->timeIntervalSinceReferenceDate() : VirtualClock::shared().wallNow();
    ZoneOffsets offsets;
    UErrorCode status = U_ZERO_ERROR;
    FoundationICU::timeZone(name).getOffset(FoundationICU::toUDate(when), false, offsets.raw, offsets.daylight, status);
    return U_FAILURE(status) ? ZoneOffsets {} : offsets;
}

long NSTimeZone::secondsFromGMTForDate(const NSDate* date) const
{
    auto offsets = offsetsAt(m_name, date);
    return (offsets.raw + offsets.daylight) / 1000;
}

long NSTimeZone::secondsFromGMT() const { return secondsFromGMTForDate(nullptr); }

bool NSTimeZone::isDaylightSavingTimeForDate(const NSDate* date) const { return offsetsAt(m_name, date).daylight != 0; }
