#pragma once

#include <objc/objc.h>

#include <cstdint>

// A boxed boolean, integer or real. The conversions are C conversions of the
// stored value, except that a real outside the range of the asked-for integer
// saturates (and NaN gives 0) instead of being undefined.
class NSNumber final : public NSObject {
    OBJC_CLASS(NSNumber)
public:
    enum class Kind { Bool, Integer, Unsigned, Real };

    NSNumber() = default;
    static RefPtr<NSNumber> numberWithBool(bool);
    static RefPtr<NSNumber> numberWithLongLong(int64_t);
    static RefPtr<NSNumber> numberWithUnsignedLongLong(uint64_t);
    static RefPtr<NSNumber> numberWithDouble(double);
    static RefPtr<NSNumber> numberWithInt(int value) { return numberWithLongLong(value); }

    Kind kind() const { return m_kind; }
    bool boolValue() const;
    int intValue() const;
    long long longLongValue() const;
    float floatValue() const { return static_cast<float>(doubleValue()); }
    double doubleValue() const;
    std::string stringValue() const;
    std::string description() const override { return stringValue(); }

private:
    Kind m_kind { Kind::Integer };
    int64_t m_integer { 0 };
    uint64_t m_unsigned { 0 };
    double m_real { 0 };
};
