#include <Foundation/IntegerConversion.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace {

struct Conversion {
    const char* text;
    bool boolValue;
    int intValue;
    float floatValue;
};

// What Foundation answers for each string, including its lenient cases.
const Conversion conversions[] = {
    { "YES", true, 0, 0 },
    { "yes", true, 0, 0 },
    { "true", true, 0, 0 },
    { "Yes please", true, 0, 0 },
    { "NO", false, 0, 0 },
    { "false", false, 0, 0 },
    { "1", true, 1, 1 },
    { "0", false, 0, 0 },
    { "007", true, 7, 7 },
    { "  7", true, 7, 7 },
    { "\t\n 42 ", true, 42, 42 },
    { "12abc", true, 12, 12 },
    { "abc", false, 0, 0 },
    { "", false, 0, 0 },
    { "-0", false, 0, 0 },
    { "+3", true, 3, 3 },
    { "-12", true, -12, -12 },
    { "0.5", false, 0, 0.5f },
    { "60.0", true, 60, 60 },
    { "1e3", true, 1, 1000 },
    { "1e", true, 1, 1 },
    { ".5", false, 0, 0.5f },
    { "99999999999", true, INT_MAX, 99999999999.0f },
    { "-99999999999", true, INT_MIN, -99999999999.0f },
    { "99999999999999999999999", true, INT_MAX, 1e23f },
    { "inf", false, 0, 0 },
    { "nan", false, 0, 0 },
    { "0x1F", false, 0, 0 },
    { "#ffffff", false, 0, 0 },
};

} // namespace

TEST(NSString, ConvertsLikeFoundation)
{
    for (const auto& row : conversions) {
        auto string = NSString::create(row.text);
        EXPECT_EQ(string->boolValue(), row.boolValue) << '"' << row.text << '"';
        EXPECT_EQ(string->intValue(), row.intValue) << '"' << row.text << '"';
        EXPECT_FLOAT_EQ(string->floatValue(), row.floatValue) << '"' << row.text << '"';
    }
}

TEST(NSString, ConversionsAnswerThroughTheRuntime)
{
    auto string = NSString::create("  7");
    EXPECT_TRUE(objc::send<bool>(string, "boolValue"));
    EXPECT_EQ(objc::send<int>(string, "intValue"), 7);
    EXPECT_FLOAT_EQ(objc::send<float>(string, "floatValue"), 7);
}

TEST(NSString, FormatsObjectsAndCountsUTF16Units)
{
    auto name = NSString::create("Kavelin");
    EXPECT_EQ(NSString::format("[%s: %d] %@ %@ %5.1f%%", "a", 3, name.get(), static_cast<NSObject*>(nullptr), 2.25), "[a: 3] Kavelin (null)   2.2%");
    EXPECT_EQ(NSString::create("h\xC3\xA9llo \xF0\x9F\x98\x80")->length(), 8u);
}

TEST(NSString, MapsCaseByUnicodeTheSameInEveryLanguage)
{
    EXPECT_EQ(NSString::lowercaseString("ÉCOLE Straße ΣΟΦΙΑ РАБОТА"), "école straße σοφια работа");
    EXPECT_EQ(NSString::uppercaseString("straße école"), "STRASSE ÉCOLE");
    // Canonical, not Turkish: I stays i even with a Turkish device, and the
    // final sigma is ICU's context rule.
    EXPECT_EQ(NSString::lowercaseString("ÖÖ IŞIK \u0130"), "öö işik i\u0307");
    EXPECT_EQ(NSString::lowercaseString("\u039f\u0394\u039f\u03a3"), "\u03bf\u03b4\u03bf\u03c2");
    // Through the runtime, as the extension may ask it.
    auto text = NSString::create("ÀÉÎ");
    EXPECT_EQ(objc::send<std::string>(text.get(), OBJC_SEL("lowercaseString")), "àéî");
    EXPECT_EQ(NSString::lowercaseString(""), "");
    // ASCII text, mapped without ICU: only the letters change, the
    // characters either side of each range stay.
    EXPECT_EQ(NSString::lowercaseString("9:05 AM @AZ[`az{"), "9:05 am @az[`az{");
    EXPECT_EQ(NSString::uppercaseString("9:05 pm @AZ[`az{"), "9:05 PM @AZ[`AZ{");
}

TEST(IntegerConversion, TruncatesTowardZeroLikeThePhoneNaNGivesZeroAndTheEndsHold)
{
    EXPECT_EQ(truncatedToInteger<int>(-2.9), -2);
    EXPECT_EQ(truncatedToInteger<int>(0.9), 0);
    EXPECT_EQ(truncatedToInteger<int>(std::nan("")), 0);
    EXPECT_EQ(truncatedToInteger<long long>(-std::nan("")), 0);
    EXPECT_EQ(truncatedToInteger<int>(INFINITY), INT_MAX);
    EXPECT_EQ(truncatedToInteger<int>(-INFINITY), INT_MIN);
    // Just inside and just outside each end of the 32-bit range.
    EXPECT_EQ(truncatedToInteger<int>(2147483647.9), INT_MAX);
    EXPECT_EQ(truncatedToInteger<int>(2147483648.0), INT_MAX);
    EXPECT_EQ(truncatedToInteger<int>(-2147483648.9), INT_MIN);
    EXPECT_EQ(truncatedToInteger<int>(-2147483649.0), INT_MIN);
    // 2^63 is the first double past the 64-bit maximum.
    EXPECT_EQ(truncatedToInteger<long long>(9223372036854775808.0), LLONG_MAX);
    EXPECT_EQ(truncatedToInteger<long long>(9223372036854774784.0), 9223372036854774784LL);
    EXPECT_EQ(truncatedToInteger<long long>(-9223372036854775808.0), LLONG_MIN);
    EXPECT_EQ(truncatedToInteger<long long>(1e300), LLONG_MAX);
}

TEST(NSNumber, ConvertsWithSaturationForHugeReals)
{
    EXPECT_EQ(NSNumber::numberWithDouble(1e300)->intValue(), INT_MAX);
    EXPECT_EQ(NSNumber::numberWithDouble(-1e300)->intValue(), INT_MIN);
    EXPECT_EQ(NSNumber::numberWithDouble(1e300)->longLongValue(), LLONG_MAX);
    EXPECT_EQ(NSNumber::numberWithDouble(std::nan(""))->intValue(), 0);
    EXPECT_TRUE(NSNumber::numberWithDouble(std::nan(""))->boolValue());
    EXPECT_EQ(NSNumber::numberWithDouble(-2.9)->intValue(), -2);
    EXPECT_TRUE(std::isinf(NSNumber::numberWithDouble(1e300)->floatValue()));

    EXPECT_FALSE(NSNumber::numberWithDouble(0.0)->boolValue());
    EXPECT_TRUE(NSNumber::numberWithDouble(0.5)->boolValue());
    EXPECT_TRUE(NSNumber::numberWithLongLong(-5)->boolValue());
    EXPECT_EQ(NSNumber::numberWithLongLong(-5)->intValue(), -5);
    EXPECT_FLOAT_EQ(NSNumber::numberWithBool(true)->floatValue(), 1);
    EXPECT_EQ(NSNumber::numberWithLongLong(-5)->stringValue(), "-5");
    EXPECT_EQ(NSNumber::numberWithUnsignedLongLong(std::numeric_limits<uint64_t>::max())->stringValue(), "18446744073709551615");
}
