#include "host/HookGroup.h"

#include <gtest/gtest.h>

TEST(VersionComparison, ComparesNumbersByValue)
{
    EXPECT_EQ(compareVersionStrings("9.3.3", "9.0"), 1);
    EXPECT_EQ(compareVersionStrings("9.0", "9.0"), 0);
    EXPECT_EQ(compareVersionStrings("10.0", "9.0"), 1);
    EXPECT_EQ(compareVersionStrings("8.4.1", "9.0"), -1);
    EXPECT_EQ(compareVersionStrings("9.10", "9.9"), 1);
    EXPECT_EQ(compareVersionStrings("09.0", "9.0"), 0);
}

TEST(VersionComparison, ShorterPrefixIsSmaller)
{
    EXPECT_EQ(compareVersionStrings("9", "9.0"), -1);
    EXPECT_EQ(compareVersionStrings("", "9.0"), -1);
    EXPECT_EQ(compareVersionStrings("9.0b2", "9.0"), 1);
}
