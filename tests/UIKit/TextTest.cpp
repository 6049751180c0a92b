#include <UIKit/NSAttributedString.h>
#include <UIKit/UILabel.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

RefPtr<UIFont> light(double size) { return UIFont::fontWithName("HelveticaNeue-Light", size); }

CGSize measure(const std::string& text, RefPtr<UIFont> font) { return NSAttributedString(text, { .font = font }).size(); }

// The clock label as the panel builds it: the time in 45 points, the date
// in 16, in one attributed text.
RefPtr<NSAttributedString> clockText(const std::string& time, const std::string& date)
{
    auto text = NSMutableAttributedString::create(time + "\n", { .font = light(45) });
    text->appendAttributedString(NSAttributedString::create(date, { .font = light(16) }).get());
    return text;
}

RefPtr<UIImage> icon(const char* name)
{
    auto image = UIImage::imageWithColor(*UIColor::blackColor(), CGSizeMake(30, 30));
    image->setName(name);
    return image;
}

} // namespace

TEST(UIFont, AppleNamesMapToInterFaces)
{
    EXPECT_EQ(light(16)->resolvedFaceName(), "Inter Light");
    EXPECT_EQ(UIFont::fontWithName("HelveticaNeue-UltraLight", 16)->resolvedFaceName(), "Inter Extra Light");
    EXPECT_EQ(UIFont::fontWithName("HelveticaNeue", 16)->resolvedFaceName(), "Inter Regular");
    EXPECT_EQ(UIFont::fontWithName("HelveticaNeue-Medium", 16)->resolvedFaceName(), "Inter Medium");
    EXPECT_EQ(UIFont::systemFontOfSize(14)->resolvedFaceName(), "Inter Regular");
    EXPECT_EQ(UIFont::boldSystemFontOfSize(14)->resolvedFaceName(), "Inter Bold");
    EXPECT_EQ(UIFont::systemFontOfSize(14)->fontName(), ".SFUIText-Regular");
    EXPECT_EQ(UIFont::systemFontOfSize(24)->fontName(), ".SFUIDisplay-Regular");
    // The phone answers nil for fonts it does not have.
    EXPECT_FALSE(UIFont::fontWithName("Comic Sans", 16));
    EXPECT_FALSE(UIFont::fontWithName("HelveticaNeue-Wobbly", 16));
}

TEST(UIFont, MeasuresInPointsWithInterMetrics)
{
    // Inter Light sets this date about 174 points wide at 16 points;
    // DejaVu Sans, what fontconfig falls back to, would be some 8% wider.
    CGSize date = measure("Saturday, November 21", light(16));
    EXPECT_NEAR(date.width, 173.7, 1.5);
    EXPECT_NEAR(date.height, 19.4, 0.5);
    // Sizes are absolute points, not 96-dpi Pango points.
    EXPECT_NEAR(measure("Saturday, November 21", light(32)).width, 2 * date.width, 0.5);
    // Weights really differ.
    EXPECT_LT(measure("Saturday", light(16)).width, measure("Saturday", UIFont::boldSystemFontOfSize(16)).width);
    EXPECT_NEAR(light(45)->lineHeight(), 45 * 1.21, 0.5);
}

TEST(NSAttributedString, EditsRunsByUTF16Ranges)
{
    // "°" is one UTF-16 unit in two UTF-8 bytes, "🔋" two units in four.
    auto text = NSMutableAttributedString::create("72°F 🔋 Charging", { .font = light(15) });
    EXPECT_EQ(text->length(), 16u);
    NSRange charging = text->rangeOfString("Charging");
    EXPECT_EQ(charging, NSMakeRange(8, 8));
    text->addAttribute(NSForegroundColorAttributeName, UIColor::colorWithRed(0, 1, 0, 1).get(), charging);
    ASSERT_EQ(text->runs().size(), 2u);
    EXPECT_EQ(text->runs()[0].text, "72°F 🔋 ");
    EXPECT_EQ(text->runs()[1].text, "Charging");
    EXPECT_EQ(text->runs()[1].attributes.font->pointSize(), 15);

    NSRange effective;
    EXPECT_EQ(text->attributesAtIndex(3, &effective).foregroundColor, nullptr);
    EXPECT_EQ(effective, NSMakeRange(0, 8));

    // Replaced text takes the attributes of what it replaces; equal
    // neighbours merge again.
    text->replaceCharactersInRange(charging, "Draining");
    EXPECT_EQ(text->string(), "72°F 🔋 Draining");
    EXPECT_TRUE(text->runs()[1].attributes.foregroundColor);
    text->removeAttribute(NSForegroundColorAttributeName, NSMakeRange(0, 100));
    EXPECT_EQ(text->runs().size(), 1u);
    // Values of the wrong class and ranges past the end change nothing.
    text->addAttribute(NSFontAttributeName, UIColor::whiteColor().get(), NSMakeRange(0, 3));
    text->addAttribute(NSFontAttributeName, light(20).get(), NSMakeRange(40, 3));
    EXPECT_EQ(text->runs().size(), 1u);
    EXPECT_EQ(text->rangeOfString("nothing").location, NSNotFound);
}

TEST(NSAttributedString, AttachmentsAreOneCharacterWithTheImageSize)
{
    auto attachment = make<NSTextAttachment>(icon("Alarm")->scaledToSize(CGSizeMake(15, 15)));
    auto text = NSMutableAttributedString::create();
    text->appendAttributedString(NSAttributedString::attributedStringWithAttachment(attachment).get());
    text->appendString(" 7:00 AM", { .font = light(15) });
    EXPECT_EQ(text->length(), 9u);
    EXPECT_EQ(attachment->effectiveBounds().size, CGSizeMake(15, 15));
    // The image adds its width to the line.
    EXPECT_NEAR(text->size().width, 15 + measure(" 7:00 AM", light(15)).width, 0.1);
}

TEST(UILabel, ShrinksOneLineTextToTheWidth)
{
    auto label = UILabel::create(CGRectMake(0, 0, 100, 20));
    label->setFont(light(17));
    label->setText("high 72 | low 55 and a long tail");
    EXPECT_EQ(label->fontScaleForBounds(), 1) << "no shrinking unless asked";
    label->setAdjustsFontSizeToFitWidth(true);
    double scale = label->fontScaleForBounds();
    EXPECT_LT(scale, 1);
    EXPECT_LE(measure(label->text(), light(17 * scale)).width, 100);
    EXPECT_GT(measure(label->text(), light(17 * (scale + 0.01))).width, 100);
    // Never below the minimum scale.
    label->setMinimumScaleFactor(0.8);
    EXPECT_EQ(label->fontScaleForBounds(), 0.8);
    // Short text keeps its size.
    label->setText("72°F");
    EXPECT_EQ(label->fontScaleForBounds(), 1);
}

TEST(UILabel, ShrinksTheTwoLineClockIntoItsBox)
{
    auto label = UILabel::create(CGRectMake(0, 0, 167.5, 80));
    label->setNumberOfLines(2);
    label->setAdjustsFontSizeToFitWidth(true);
    label->setAttributedText(clockText("9:05", "Sunday, November 5").get());
    EXPECT_EQ(label->fontScaleForBounds(), 1);
    // A long date in a narrow box: both lines shrink by one factor, so that
    // the date stays on its line.
    label->setAttributedText(clockText("12:30", "Wednesday, September 30").get());
    double scale = label->fontScaleForBounds();
    EXPECT_LT(scale, 1);
    EXPECT_GT(scale, 0.8);
    EXPECT_LE(measure("Wednesday, September 30", light(16 * scale)).width, 167.5);
    // Too short a box shrinks for the height.
    label->setFrame(CGRectMake(0, 0, 300, 40));
    EXPECT_LT(label->fontScaleForBounds(), 0.6);
}

TEST(UILabel, FontAndColourApplyToTheWholeAttributedText)
{
    auto label = UILabel::create(CGRectMake(0, 0, 200, 80));
    label->setAttributedText(clockText("9:05", "Sunday, November 5").get());
    label->setTextColor(UIColor::whiteColor());
    auto runs = label->attributedText()->runs(); // a copy
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].attributes.font->pointSize(), 45);
    EXPECT_EQ(runs[1].attributes.foregroundColor->hexString(), "#ffffffff");
    // A new text without colours takes the label's.
    label->setAttributedText(clockText("9:06", "Sunday, November 5").get());
    EXPECT_EQ(label->attributedText()->runs()[1].attributes.foregroundColor->hexString(), "#ffffffff");
    label->setFont(light(10));
    EXPECT_EQ(label->attributedText()->runs().size(), 1u);
    // Plain text has no runs of its own.
    label->setText("plain");
    EXPECT_FALSE(label->hasAttributedText());
    EXPECT_EQ(label->attributedText()->runs()[0].attributes.font->pointSize(), 10);
}

TEST(UILabel, DumpShowsTextRunsAndInlineImages)
{
    auto label = UILabel::create(CGRectMake(0, 98, 375, 20));
    label->setName("_alarmTimerLabel");
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setAdjustsFontSizeToFitWidth(true);
    auto white = UIColor::whiteColor();
    auto alarm = icon("Alarm")->scaledToSize(CGSizeMake(15, 15))->tintedWithColor(white.get());
    auto text = NSMutableAttributedString::create();
    text->appendAttributedString(NSAttributedString::attributedStringWithAttachment(make<NSTextAttachment>(alarm)).get());
    text->appendString(" 7:00 AM | ");
    text->appendAttributedString(NSAttributedString::attributedStringWithAttachment(make<NSTextAttachment>(alarm)).get());
    text->appendString(" 4:59");
    text->addAttributes({ .font = light(15) }, NSMakeRange(0, text->length()));
    label->setAttributedText(text.get());
    label->setTextColor(UIColor::colorWithRed(1, 0, 0, 1));

    nlohmann::json node;
    label->dumpProperties(node);
    EXPECT_EQ(node["name"], "_alarmTimerLabel");
    EXPECT_EQ(node["text"], " 7:00 AM |  4:59");
    EXPECT_EQ(node["alignment"], "center");
    EXPECT_EQ(node["lines"], 1);
    EXPECT_EQ(node["shrinks"], true);
    EXPECT_EQ(node["interactive"], false);
    EXPECT_EQ(node["font"], nlohmann::json::parse(R"([".SFUIText-Regular", 17])"));
    EXPECT_EQ(node["runs"], nlohmann::json::parse(R"([
        {"image": "Alarm", "size": [15, 15], "color": "#ffffffff"},
        {"text": " 7:00 AM | ", "font": ["HelveticaNeue-Light", 15], "color": "#ff0000ff"},
        {"image": "Alarm", "size": [15, 15], "color": "#ffffffff"},
        {"text": " 4:59", "font": ["HelveticaNeue-Light", 15], "color": "#ff0000ff"}])"));
}

TEST(UILabel, SizeThatFitsWrapsAndDropsExtraParagraphsOnOneLine)
{
    auto label = UILabel::create();
    label->setFont(light(10));
    label->setText("Enable location services for weather then open the weather app. Make sure you have an internet connection.");
    CGSize oneLine = label->sizeThatFits(CGSizeMake(150, 1000));
    EXPECT_EQ(oneLine.width, 150);
    label->setNumberOfLines(0);
    CGSize wrapped = label->sizeThatFits(CGSizeMake(150, 1000));
    EXPECT_LE(wrapped.width, 150);
    EXPECT_GT(wrapped.height, 3 * oneLine.height);

    // The unit text ends in a line break, which a one-line label does not show.
    label->setNumberOfLines(1);
    label->setText("72°F\n");
    EXPECT_EQ(label->sizeThatFits(CGSizeMake(0, 0)).height, oneLine.height);
}
