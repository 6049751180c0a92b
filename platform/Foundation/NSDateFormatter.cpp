#include "NSDateFormatter.h"

#include "ICUSupport.h"
#include "NSCalendar.h"

#include <unicode/smpdtfmt.h>

#include <cmath>
#include <map>
#include <memory>

OBJC_IMPLEMENT_CLASS(NSDateFormatter, NSObject)
{
    c.method<&NSDateFormatter::setDateFormat>("setDateFormat:");
    c.method<&NSDateFormatter::dateFormat>("dateFormat");
    c.method<&NSDateFormatter::setLocale>("setLocale:");
    c.method<&NSDateFormatter::setTimeZone>("setTimeZone:");
    c.method<&NSDateFormatter::stringFromDate>("stringFromDate:");
    c.method<&NSDateFormatter::dateFromString>("dateFromString:");
    c.allocatable();
}

namespace {

using FormatterCache = std::map<std::string, std::unique_ptr<icu::SimpleDateFormat>>;

FormatterCache& formatterCache()
{
    static auto* cache = new FormatterCache();
    return *cache;
}

// Bounds the cache for callers that make up patterns; the extension uses a
// handful, so a full clear is rare and cheap.
constexpr size_t maximumCachedFormatters = 256;

// The shared formatter for a pattern, locale and zone, or null when ICU
// rejects the pattern. Callers only use its const operations.
const icu::SimpleDateFormat* sharedFormatter(const std::string& pattern, const std::string& locale, const std::string& zone)
{
    auto& cache = formatterCache();
    std::string key = pattern + '\x1f' + locale + '\x1f' + zone;
    if (auto it = cache.find(key); it != cache.end())
        return it->second.get();
    if (cache.size() >= maximumCachedFormatters)
        cache.clear();
    UErrorCode status = U_ZERO_ERROR;
    auto formatter = std::make_unique<icu::SimpleDateFormat>(FoundationICU::toUnicode(pattern), FoundationICU::locale(locale), status);
    if (U_FAILURE(status)) {
        formatter = nullptr;
    } else {
        formatter->setTimeZone(FoundationICU::timeZone(zone));
        // Apple's formatters parse strictly unless asked otherwise.
        formatter->setLenient(false);
    }
    return cache.emplace(std::move(key), std::move(formatter)).first->second.get();
}

std::string format(const std::string& pattern, const std::string& locale, const std::string& zone, const NSDate* date)
{
    if (!date || !std::isfinite(date->timeIntervalSinceReferenceDate()))
        return {};
    const auto* formatter = sharedFormatter(pattern, locale, zone);
    if (!formatter)
        return {};
    icu::UnicodeString out;
    formatter->format(FoundationICU::toUDate(date->timeIntervalSinceReferenceDate()), out);
    return FoundationICU::toUTF8(out);
}

} // namespace

std::string NSDateFormatter::stringFromDate(const NSDate* date) const
{
    return format(m_dateFormat, locale()->localeIdentifier(), timeZone()->name(), date);
}

RefPtr<NSDate> NSDateFormatter::dateFromString(const std::string& text) const
{
    const auto* formatter = sharedFormatter(m_dateFormat, locale()->localeIdentifier(), timeZone()->name());
    if (!formatter)
        return nullptr;
    icu::UnicodeString input = FoundationICU::toUnicode(text);
    icu::ParsePosition position(0);
    UDate parsed = formatter->parse(input, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != input.length())
        return nullptr;
    return make<NSDate>(FoundationICU::fromUDate(parsed));
}

std::string NSDateFormatter::ISO8601StringFromDate(const NSDate* date)
{
    return format("yyyy-MM-dd'T'HH:mm:ssxxx", "en_US_POSIX", NSTimeZone::defaultTimeZone()->name(), date);
}

static bool readNumber(const std::string& text, size_t& at, size_t digits, long& value)
{
    if (at + digits > text.size())
        return false;
    value = 0;
    for (size_t end = at + digits; at < end; ++at) {
        if (text[at] < '0' || text[at] > '9')
            return false;
        value = value * 10 + (text[at] - '0');
    }
    return true;
}

static bool readSeparator(const std::string& text, size_t& at, char separator)
{
    if (at >= text.size() || text[at] != separator)
        return false;
    ++at;
    return true;
}

static long daysInMonth(long year, long month)
{
    static const int days[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

RefPtr<NSDate> NSDateFormatter::dateFromLocalISO8601String(const std::string& text)
{
    long year, month, day, hour, minute, second = 0;
    size_t at = 0;
    bool ok = readNumber(text, at, 4, year) && readSeparator(text, at, '-') && readNumber(text, at, 2, month)
        && readSeparator(text, at, '-') && readNumber(text, at, 2, day) && readSeparator(text, at, 'T')
        && readNumber(text, at, 2, hour) && readSeparator(text, at, ':') && readNumber(text, at, 2, minute);
    if (ok && at < text.size())
        ok = readSeparator(text, at, ':') && readNumber(text, at, 2, second) && at == text.size();
    if (!ok || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month) || hour > 23 || minute > 59 || second > 59)
        return nullptr;
    auto components = NSDateComponents::create();
    components->setYear(year);
    components->setMonth(month);
    components->setDay(day);
    components->setHour(hour);
    components->setMinute(minute);
    components->setSecond(second);
    return NSCalendar::currentCalendar()->dateFromComponents(components.get());
}

void NSDateFormatter::clearFormatterCache() { formatterCache().clear(); }

size_t NSDateFormatter::cachedFormatterCount() { return formatterCache().size(); }
