#pragma once

#include <objc/objc.h>

// A moment, as seconds since 1 January 2001 UTC.
class NSDate final : public NSObject {
    OBJC_CLASS(NSDate)
public:
    NSDate() = default;
    explicit NSDate(double sinceReferenceDate)
        : m_time(sinceReferenceDate)
    {
    }
    // Now, on the device's (virtual) wall clock.
    static RefPtr<NSDate> date();
    static RefPtr<NSDate> dateWithTimeIntervalSinceReferenceDate(double seconds) { return make<NSDate>(seconds); }
    static RefPtr<NSDate> dateWithTimeIntervalSince1970(double seconds);
    static RefPtr<NSDate> dateWithTimeIntervalSinceNow(double seconds);

    double timeIntervalSinceReferenceDate() const { return m_time; }
    double timeIntervalSince1970() const;
    double timeIntervalSinceNow() const;
    double timeIntervalSinceDate(NSDate* other) const { return other ? m_time - other->m_time : m_time; }
    RefPtr<NSDate> dateByAddingTimeInterval(double seconds) const { return make<NSDate>(m_time + seconds); }
    std::string description() const override;

private:
    double m_time { 0 };
};
