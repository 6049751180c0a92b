#include "PreferencesFile.h"

#include <CorvLib/CVColorFactory.h>
#include <Foundation/NSArray.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSString.h>

using CVPreferenceManagerTest = PreferencesTest;

TEST_F(CVPreferenceManagerTest, AnswersStoredStringsAndNumbersOrTheFallbackAsAString)
{
    auto preferences = NSDictionary::create();
    preferences->setObject(NSString::create("#123456"), "color");
    preferences->setObject(NSNumber::numberWithInt(-4), "number");
    preferences->setObject(NSArray::create({ NSString::create("a") }), "list");
    writePreferences(preferences.get(), NSPropertyListXMLFormat_v1_0);

    auto reader = objc::castRef<CVPreferenceManager>(
        objc::send<StrongId>(objc::alloc(objc::objc_getClass("CVPreferenceManager")), "initWithContentsOfFile:", std::string(KVSettings::preferencesPath)));
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->count(), 3u);
    EXPECT_EQ(NSStringValue(reader->valueForkey("color", "#ffffff").get()), "#123456");
    auto number = objc::castRef<NSNumber>(objc::send<StrongId>(reader, "valueForkey:fallback:", "number", "7"));
    ASSERT_TRUE(number);
    EXPECT_EQ(number->intValue(), -4);
    for (const char* key : { "list", "missing" }) {
        auto fallback = reader->valueForkey(key, "60.0");
        ASSERT_TRUE(objc::cast<NSString>(fallback)) << key;
        EXPECT_EQ(NSStringValue(fallback.get()), "60.0");
    }

    auto empty = make<CVPreferenceManager>()->initWithContentsOfFile("/no/such/file.plist");
    EXPECT_EQ(empty->count(), 0u);
    EXPECT_EQ(NSStringValue(empty->valueForkey("color", "").get()), "");
}

TEST(CVColorFactory, MakesOpaqueColoursFromHashAndSixHexDigits)
{
    const std::pair<const char*, const char*> colours[] = {
        { "#ff0000", "#ff0000ff" },
        { "#FFa500", "#ffa500ff" },
        { "#000000", "#000000ff" },
        { " #1badf8\n", "#1badf8ff" },
    };
    for (auto& [text, expected] : colours)
        EXPECT_EQ(CVColorFactory::colorFromHexString(text)->hexString(), expected) << text;
    auto viaRuntime = objc::send<RefPtr<UIColor>>(objc::objc_getClass("CVColorFactory"), "colorFromHexString:", "#00ff00");
    ASSERT_TRUE(viaRuntime);
    EXPECT_EQ(viaRuntime->hexString(), "#00ff00ff");
}

TEST(CVColorFactory, MalformedStringsGiveOpaqueWhite)
{
    for (const char* text : { "", "#", "#fff", "ff0000", "#ff00zz", "#ff00000", "#ff000", "red", "#-10000", "# ff0000", "#ff 000", "0x00ff00", "#ff0000ff" })
        EXPECT_EQ(CVColorFactory::colorFromHexString(text)->hexString(), "#ffffffff") << '"' << text << '"';
}
