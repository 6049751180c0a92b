#include "DeviceRoot.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSPropertyListSerialization.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

RefPtr<NSData> bytes(const std::string& text) { return NSData::dataWithBytes(text.data(), text.size()); }

StrongId parse(const std::string& text, RefPtr<NSError>* error = nullptr)
{
    return NSPropertyListSerialization::propertyListWithData(bytes(text).get(), nullptr, error);
}

std::string xml(const std::string& body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">"
        + body + "</plist>\n";
}

// Builds a binary property list from encoded objects: each object's bytes,
// then a table of one-byte offsets (two-byte when needed) and the trailer.
std::string binary(const std::vector<std::string>& objects, uint64_t top = 0, uint8_t referenceSize = 1)
{
    std::string out = "bplist00";
    std::vector<size_t> offsets;
    for (auto& object : objects) {
        offsets.push_back(out.size());
        out += object;
    }
    size_t table = out.size();
    uint8_t offsetSize = table < 256 ? 1 : 2;
    for (size_t offset : offsets) {
        if (offsetSize == 2)
            out += static_cast<char>(offset >> 8);
        out += static_cast<char>(offset & 0xFF);
    }
    auto be64 = [](uint64_t value) {
        std::string s(8, '\0');
        for (int i = 7; i >= 0; --i, value >>= 8)
            s[i] = static_cast<char>(value & 0xFF);
        return s;
    };
    out += std::string(6, '\0') + static_cast<char>(offsetSize) + static_cast<char>(referenceSize);
    out += be64(objects.size()) + be64(top) + be64(table);
    return out;
}

std::string array(std::initializer_list<uint8_t> references)
{
    std::string out(1, static_cast<char>(0xA0 | references.size()));
    for (uint8_t reference : references)
        out += static_cast<char>(reference);
    return out;
}

std::string repeated(const std::string& text, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i)
        out += text;
    return out;
}

NSNumber* number(const NSDictionary& dictionary, const char* key) { return objc::cast<NSNumber>(dictionary.objectForKey(key)); }

} // namespace

TEST(NSPropertyListSerialization, ReadsEveryValueTypeFromXML)
{
    NSPropertyListFormat format {};
    auto root = objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(bytes(xml(
        "<dict><key>text</key><string>caf&#233; &amp; more</string><key>count</key><integer>42</integer>"
        "<key>negative</key><integer>-5</integer><key>huge</key><integer>9223372036854775807</integer>"
        "<key>rate</key><real>0.5</real><key>on</key><true/><key>off</key><false/>"
        "<key>when</key><date>2026-11-21T08:05:00Z</date><key>blob</key><data>AAEC/w==</data>"
        "<key>list</key><array><string>a</string><integer>1</integer></array>"
        "<key>nested</key><dict><key>inner</key><string>x</string></dict></dict>")).get(), &format));
    ASSERT_TRUE(root);
    EXPECT_EQ(format, NSPropertyListXMLFormat_v1_0);
    EXPECT_EQ(NSStringValue(root->objectForKey("text").get()), "café & more");
    EXPECT_EQ(number(*root, "count")->intValue(), 42);
    EXPECT_EQ(number(*root, "negative")->longLongValue(), -5);
    EXPECT_EQ(number(*root, "huge")->longLongValue(), INT64_MAX);
    EXPECT_EQ(number(*root, "rate")->doubleValue(), 0.5);
    EXPECT_EQ(number(*root, "on")->kind(), NSNumber::Kind::Bool);
    EXPECT_TRUE(number(*root, "on")->boolValue());
    EXPECT_FALSE(number(*root, "off")->boolValue());
    auto* when = objc::cast<NSDate>(root->objectForKey("when"));
    ASSERT_TRUE(when);
    EXPECT_DOUBLE_EQ(when->timeIntervalSince1970(), 1795248300);
    auto* blob = objc::cast<NSData>(root->objectForKey("blob"));
    ASSERT_TRUE(blob);
    EXPECT_EQ(blob->bytes(), (std::vector<uint8_t> { 0, 1, 2, 255 }));
    auto* list = objc::cast<NSArray>(root->objectForKey("list"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->count(), 2u);
    auto* nested = objc::cast<NSDictionary>(root->objectForKey("nested"));
    ASSERT_TRUE(nested);
    EXPECT_EQ(NSStringValue(nested->objectForKey("inner").get()), "x");
}

TEST(NSPropertyListSerialization, WritesBinaryListsThatReadBackTheSame)
{
    auto root = NSDictionary::create();
    root->setObject(NSString::create("#ff0000"), "timeColor");
    root->setObject(NSNumber::numberWithBool(false), "enabled");
    root->setObject(NSNumber::numberWithLongLong(-5), "calveraMaxEvents");
    root->setObject(NSNumber::numberWithLongLong(INT64_MIN), "smallest");
    root->setObject(NSNumber::numberWithUnsignedLongLong(UINT64_MAX), "largest");
    root->setObject(NSNumber::numberWithDouble(1e300), "idleTimerDuration");
    root->setObject(NSDate::dateWithTimeIntervalSinceReferenceDate(100.5), "date");
    root->setObject(NSData::dataWithBytes("\0\1", 2), "data");
    root->setObject(NSArray::create({ NSString::create("Work"), NSNumber::numberWithInt(3) }), "list");

    auto data = NSPropertyListSerialization::dataWithPropertyList(root.get(), NSPropertyListBinaryFormat_v1_0);
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(data->bytes().begin(), data->bytes().begin() + 8), "bplist00");
    NSPropertyListFormat format {};
    auto back = objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data.get(), &format));
    ASSERT_TRUE(back);
    EXPECT_EQ(format, NSPropertyListBinaryFormat_v1_0);
    EXPECT_EQ(back->count(), root->count());
    EXPECT_EQ(NSStringValue(back->objectForKey("timeColor").get()), "#ff0000");
    EXPECT_EQ(number(*back, "enabled")->kind(), NSNumber::Kind::Bool);
    EXPECT_EQ(number(*back, "calveraMaxEvents")->intValue(), -5);
    EXPECT_EQ(number(*back, "smallest")->longLongValue(), INT64_MIN);
    // Unsigned values past INT64_MAX come back as their signed bit pattern.
    EXPECT_EQ(number(*back, "largest")->longLongValue(), -1);
    EXPECT_EQ(number(*back, "idleTimerDuration")->doubleValue(), 1e300);
    EXPECT_DOUBLE_EQ(objc::cast<NSDate>(back->objectForKey("date"))->timeIntervalSinceReferenceDate(), 100.5);
    EXPECT_EQ(objc::cast<NSData>(back->objectForKey("data"))->length(), 2u);
    EXPECT_EQ(objc::cast<NSArray>(back->objectForKey("list"))->count(), 2u);

    auto xmlData = NSPropertyListSerialization::dataWithPropertyList(root.get(), NSPropertyListXMLFormat_v1_0);
    ASSERT_TRUE(xmlData);
    EXPECT_TRUE(NSPropertyListSerialization::propertyListWithData(xmlData.get()));
}

TEST(NSPropertyListSerialization, RefusesToWriteWhatAListCannotHold)
{
    RefPtr<NSError> error;
    auto holder = NSDictionary::create();
    holder->setObject(make<NSObject>(), "object");
    EXPECT_FALSE(NSPropertyListSerialization::dataWithPropertyList(holder.get(), NSPropertyListBinaryFormat_v1_0, &error));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code(), NSPropertyListWriteInvalidError);

    auto loop = NSArray::create();
    loop->addObject(loop);
    EXPECT_FALSE(NSPropertyListSerialization::dataWithPropertyList(loop.get(), NSPropertyListBinaryFormat_v1_0));
    loop->mutableObjects().clear();
    EXPECT_FALSE(NSPropertyListSerialization::dataWithPropertyList(NSArray::create({ nullptr }).get(), NSPropertyListXMLFormat_v1_0));
}

TEST(NSPropertyListSerialization, RejectsHostileInputWithAnError)
{
    std::string nestedXML = repeated("<array>", 200);
    std::string okXML = xml("<dict><key>a</key><string>b</string></dict>");
    std::string okBinary = binary({ "\xD1\x01\x02", "\x51" "a", "\x51" "b" });
    ASSERT_TRUE(parse(okBinary));

    // Each object an array holding the next; the last one holds the first.
    std::vector<std::string> deep;
    for (int i = 0; i < 100; ++i)
        deep.push_back(array({ static_cast<uint8_t>(i + 1) }));
    deep.push_back("\x09");
    // Forty arrays each referring twice to the next: 2^40 objects once expanded.
    std::vector<std::string> doubling;
    for (int i = 0; i < 40; ++i)
        doubling.push_back(array({ static_cast<uint8_t>(i + 1), static_cast<uint8_t>(i + 1) }));
    doubling.push_back("\x08");

    const std::pair<const char*, std::string> cases[] = {
        { "empty", "" },
        { "not a plist", "hello, world" },
        { "half an XML list", okXML.substr(0, okXML.size() / 2) },
        { "half a binary list", okBinary.substr(0, okBinary.size() / 2) },
        { "binary header only", "bplist00" },
        { "other binary version", "bplist15" + okBinary.substr(8) },
        { "XML nested 200 deep", xml(nestedXML) },
        { "binary nested 100 deep", binary(deep) },
        { "binary cycle", binary({ array({ 1 }), array({ 0 }) }) },
        { "binary self reference", binary({ array({ 0 }) }) },
        { "binary shared objects expanding past the limit", binary(doubling) },
        { "reference out of range", binary({ array({ 7 }) }) },
        { "top object out of range", binary({ "\x09" }, 3) },
        { "dictionary key not a string", binary({ "\xD1\x01\x01", "\x09" }) },
        { "UTF-16 key holding a NUL", binary({ "\xD1\x01\x02", std::string("\x62\x00\x41\x00\x00", 5), "\x09" }) },
        { "string holding a NUL", binary({ std::string("\x53" "A\0B", 4) }) },
        { "string longer than the file", binary({ "\x5F\x10\xFF" "abc" }) },
        { "integer 32 bytes wide", binary({ "\x15" + std::string(32, '\1') }) },
        { "unknown object type", binary({ "\x70" }) },
        { "set", binary({ "\xC0" }) },
        { "too large", xml("<string>" + std::string(300 * 1024, 'x') + "</string>") },
        { "unterminated tag", xml("<dict><key") },
        { "quoted attributes hiding nesting", xml(repeated("<array a=\"/>\">", 70)) },
    };
    for (auto& [name, input] : cases) {
        RefPtr<NSError> error;
        EXPECT_FALSE(parse(input, &error)) << name;
        EXPECT_TRUE(error) << name;
    }
}

TEST(NSPropertyListSerialization, AcceptsOddButHarmlessInput)
{
    // A scalar root, a 16-byte integer, a huge real and a UTF-16 string.
    EXPECT_EQ(objc::cast<NSNumber>(parse(binary({ "\x09" })))->kind(), NSNumber::Kind::Bool);
    auto wide = objc::castRef<NSNumber>(parse(binary({ "\x14" + std::string(15, '\0') + "\x07" })));
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->longLongValue(), 7);
    EXPECT_TRUE(std::isinf(objc::cast<NSNumber>(parse(xml("<real>1e400</real>")))->doubleValue()));
    EXPECT_EQ(NSStringValue(parse(binary({ std::string("\x62\x00\x68\x00\xE9", 5) })).get()), "h\xC3\xA9");
    // Shared objects within the limit are fine: 2^10 leaves.
    std::vector<std::string> doubling;
    for (int i = 0; i < 10; ++i)
        doubling.push_back(array({ static_cast<uint8_t>(i + 1), static_cast<uint8_t>(i + 1) }));
    doubling.push_back("\x08");
    EXPECT_TRUE(parse(binary(doubling)));
    // Nesting up to the limit reads in both formats.
    std::string nested;
    for (unsigned i = 0; i < NSPropertyListSerialization::maximumDepth; ++i)
        nested = "<array>" + nested + "</array>";
    EXPECT_TRUE(parse(xml(nested)));
}

TEST(NSDictionary, ReadsOnlyDictionaryFilesAndAnswersNullOtherwise)
{
    TemporaryDeviceRoot root;
    root.write("/prefs/good.plist", xml("<dict><key>enabled</key><false/></dict>"));
    root.write("/prefs/array.plist", xml("<array><string>a</string></array>"));
    root.write("/prefs/garbage.plist", "\x01\x02\x03 not at all");
    root.write("/prefs/empty.plist", "");
    auto good = NSDictionary::dictionaryWithContentsOfFile("/prefs/good.plist");
    ASSERT_TRUE(good);
    EXPECT_FALSE(number(*good, "enabled")->boolValue());
    for (const char* path : { "/prefs/array.plist", "/prefs/garbage.plist", "/prefs/empty.plist", "/prefs/missing.plist", "/prefs" })
        EXPECT_FALSE(NSDictionary::dictionaryWithContentsOfFile(path)) << path;
}
