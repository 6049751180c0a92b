#include "NSString.h"

#include "ICUSupport.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <optional>

OBJC_IMPLEMENT_CLASS(NSString, NSObject)
{
    c.method<static_cast<bool (NSString::*)() const>(&NSString::boolValue)>("boolValue");
    c.method<static_cast<int (NSString::*)() const>(&NSString::intValue)>("intValue");
    c.method<static_cast<long long (NSString::*)() const>(&NSString::longLongValue)>("longLongValue");
    c.method<static_cast<float (NSString::*)() const>(&NSString::floatValue)>("floatValue");
    c.method<static_cast<double (NSString::*)() const>(&NSString::doubleValue)>("doubleValue");
    c.method<static_cast<std::string (NSString::*)() const>(&NSString::lowercaseString)>("lowercaseString");
    c.method<static_cast<std::string (NSString::*)() const>(&NSString::uppercaseString)>("uppercaseString");
    c.method<&NSString::length>("length");
    c.method<&NSString::isEqualToString>("isEqualToString:");
    c.allocatable();
}

static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

static size_t skipBlanks(const std::string& s)
{
    size_t i = 0;
    while (i < s.size() && isBlank(s[i]))
        ++i;
    return i;
}

bool NSString::boolValue(const std::string& s)
{
    size_t i = skipBlanks(s);
    if (i >= s.size())
        return false;
    char c = s[i];
    if (c == 'Y' || c == 'y' || c == 'T' || c == 't')
        return true;
    if (c == '+' || c == '-')
        ++i;
    while (i < s.size() && s[i] == '0')
        ++i;
    return i < s.size() && s[i] >= '1' && s[i] <= '9';
}

long long NSString::longLongValue(const std::string& s)
{
    size_t i = skipBlanks(s);
    bool negative = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        negative = s[i++] == '-';
    unsigned long long magnitude = 0;
    bool overflow = false;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        unsigned digit = static_cast<unsigned>(s[i] - '0');
        if (magnitude > (ULLONG_MAX - digit) / 10)
            overflow = true;
        else
            magnitude = magnitude * 10 + digit;
    }
    if (negative)
        return overflow || magnitude > static_cast<unsigned long long>(LLONG_MAX) + 1 ? LLONG_MIN : static_cast<long long>(0 - magnitude);
    return overflow || magnitude > static_cast<unsigned long long>(LLONG_MAX) ? LLONG_MAX : static_cast<long long>(magnitude);
}

int NSString::intValue(const std::string& s)
{
    long long value = longLongValue(s);
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return static_cast<int>(value);
}

double NSString::doubleValue(const std::string& s)
{
    // Only a plain decimal number is read (no "inf", "nan" or hexadecimal
    // forms, which strtod alone would accept).
    size_t i = skipBlanks(s);
    size_t start = i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        ++i;
    size_t digits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9')
        ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && s[i] >= '0' && s[i] <= '9')
            ++i, ++digits;
    }
    if (!digits)
        return 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        if (j < s.size() && s[j] >= '0' && s[j] <= '9') {
            while (j < s.size() && s[j] >= '0' && s[j] <= '9')
                ++j;
            i = j;
        }
    }
    std::string number = s.substr(start, i - start);
    return std::strtod(number.c_str(), nullptr);
}

// ASCII text maps letter by letter (the root locale has no special case
// there), without the round trip through UTF-16: most texts a reload
// lower-cases are times like "9:05 am". Nothing for any other text.
static std::optional<std::string> asciiMapped(const std::string& text, char from, char to)
{
    std::string mapped = text;
    for (char& c : mapped) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return std::nullopt;
        if (c >= from && c <= to)
            c = static_cast<char>(c - from + (from == 'A' ? 'a' : 'A'));
    }
    return mapped;
}

std::string NSString::lowercaseString(const std::string& text)
{
    if (auto ascii = asciiMapped(text, 'A', 'Z'))
        return *ascii;
    // Invalid UTF-8 becomes U+FFFD on the way in, as Foundation would refuse
    // to make such a string at all.
    auto unicode = FoundationICU::toUnicode(text);
    return FoundationICU::toUTF8(unicode.toLower(icu::Locale::getRoot()));
}

std::string NSString::uppercaseString(const std::string& text)
{
    if (auto ascii = asciiMapped(text, 'a', 'z'))
        return *ascii;
    auto unicode = FoundationICU::toUnicode(text);
    return FoundationICU::toUTF8(unicode.toUpper(icu::Locale::getRoot()));
}

size_t NSString::length() const
{
    size_t units = 0;
    for (size_t i = 0; i < m_value.size(); ++i) {
        auto byte = static_cast<unsigned char>(m_value[i]);
        if ((byte & 0xC0) == 0x80)
            continue;
        units += byte >= 0xF0 ? 2 : 1; // four-byte sequences are surrogate pairs
    }
    return units;
}

std::vector<std::string> NSString::componentsSeparatedByString(const std::string& separator) const
{
    std::vector<std::string> parts;
    if (separator.empty()) {
        parts.push_back(m_value);
        return parts;
    }
    size_t start = 0;
    while (true) {
        size_t found = m_value.find(separator, start);
        if (found == std::string::npos) {
            parts.push_back(m_value.substr(start));
            return parts;
        }
        parts.push_back(m_value.substr(start, found - start));
        start = found + separator.size();
    }
}

std::string NSString::vformat(const char* format, va_list args)
{
    std::string out;
    if (!format)
        return out;
    for (const char* p = format; *p;) {
        if (*p != '%') {
            out += *p++;
            continue;
        }
        // Collect one conversion directive.
        const char* start = p++;
        while (*p && std::string_view("-+ #0123456789.*hlLqjzt").find(*p) != std::string_view::npos)
            ++p;
        if (!*p)
            break;
        char conversion = *p++;
        std::string directive(start, p);
        char buffer[512];
        switch (conversion) {
        case '%':
            out += '%';
            break;
        case '@': {
            auto* object = va_arg(args, NSObject*);
            out += object ? object->description() : "(null)";
            break;
        }
        case 's': {
            const char* text = va_arg(args, const char*);
            std::snprintf(buffer, sizeof buffer, directive.c_str(), text ? text : "(null)");
            out += buffer;
            break;
        }
        case 'f':
        case 'F':
        case 'e':
        case 'E':
        case 'g':
        case 'G':
            if (directive.find('L') != std::string::npos)
                std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, long double));
            else
                std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, double));
            out += buffer;
            break;
        case 'c':
            std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, int));
            out += buffer;
            break;
        case 'p':
            std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, void*));
            out += buffer;
            break;
        default:
            // Integers: pass the length modifiers through to the C library.
            if (directive.find("ll") != std::string::npos || directive.find('q') != std::string::npos || directive.find('j') != std::string::npos)
                std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, long long));
            else if (directive.find('l') != std::string::npos || directive.find('z') != std::string::npos || directive.find('t') != std::string::npos)
                std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, long));
            else
                std::snprintf(buffer, sizeof buffer, directive.c_str(), va_arg(args, int));
            out += buffer;
            break;
        }
    }
    return out;
}

std::string NSString::format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string result = vformat(format, args);
    va_end(args);
    return result;
}

RefPtr<NSString> NSString::stringWithFormat(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string result = vformat(format, args);
    va_end(args);
    return create(std::move(result));
}

std::string NSStringValue(NSObject* object)
{
    auto* string = dynamic_cast<NSString*>(object);
    return string ? string->string() : std::string();
}
