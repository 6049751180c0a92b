#include "NSNumber.h"

#include "IntegerConversion.h"

#include <climits>
#include <cmath>
#include <cstdio>

OBJC_IMPLEMENT_CLASS(NSNumber, NSObject)
{
    c.method<&NSNumber::boolValue>("boolValue");
    c.method<&NSNumber::intValue>("intValue");
    c.method<&NSNumber::longLongValue>("longLongValue");
    c.method<&NSNumber::floatValue>("floatValue");
    c.method<&NSNumber::doubleValue>("doubleValue");
    c.method<&NSNumber::stringValue>("stringValue");
}

RefPtr<NSNumber> NSNumber::numberWithBool(bool value)
{
    auto number = make<NSNumber>();
    number->m_kind = Kind::Bool;
    number->m_integer = value ? 1 : 0;
    return number;
}

RefPtr<NSNumber> NSNumber::numberWithLongLong(int64_t value)
{
    auto number = make<NSNumber>();
    number->m_kind = Kind::Integer;
    number->m_integer = value;
    return number;
}

RefPtr<NSNumber> NSNumber::numberWithUnsignedLongLong(uint64_t value)
{
    auto number = make<NSNumber>();
    number->m_kind = Kind::Unsigned;
    number->m_unsigned = value;
    return number;
}

RefPtr<NSNumber> NSNumber::numberWithDouble(double value)
{
    auto number = make<NSNumber>();
    number->m_kind = Kind::Real;
    number->m_real = value;
    return number;
}

bool NSNumber::boolValue() const
{
    switch (m_kind) {
    case Kind::Real:
        return m_real != 0;
    case Kind::Unsigned:
        return m_unsigned != 0;
    default:
        return m_integer != 0;
    }
}

int NSNumber::intValue() const
{
    switch (m_kind) {
    case Kind::Real:
        return truncatedToInteger<int>(m_real);
    case Kind::Unsigned:
        return static_cast<int>(m_unsigned); // wraps, as the C conversion does
    default:
        return static_cast<int>(m_integer);
    }
}

long long NSNumber::longLongValue() const
{
    switch (m_kind) {
    case Kind::Real:
        return truncatedToInteger<long long>(m_real);
    case Kind::Unsigned:
        return static_cast<long long>(m_unsigned);
    default:
        return m_integer;
    }
}

double NSNumber::doubleValue() const
{
    switch (m_kind) {
    case Kind::Real:
        return m_real;
    case Kind::Unsigned:
        return static_cast<double>(m_unsigned);
    default:
        return static_cast<double>(m_integer);
    }
}

std::string NSNumber::stringValue() const
{
    char buffer[64];
    switch (m_kind) {
    case Kind::Real:
        std::snprintf(buffer, sizeof buffer, "%.17g", m_real);
        break;
    case Kind::Unsigned:
        std::snprintf(buffer, sizeof buffer, "%llu", static_cast<unsigned long long>(m_unsigned));
        break;
    default:
        std::snprintf(buffer, sizeof buffer, "%lld", static_cast<long long>(m_integer));
        break;
    }
    return buffer;
}
