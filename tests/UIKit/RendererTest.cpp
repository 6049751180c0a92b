#include <UIKit/ReferencePicture.h>
#include <UIKit/RenderContext.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UIVisualEffectView.h>
#include <UIKit/UIWindow.h>

#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

const std::filesystem::path referenceFolder = KV_UIKIT_REFERENCE_DIR;
const std::filesystem::path failureFolder = KV_UIKIT_FAILURE_DIR;

std::filesystem::path scratchFolder()
{
    auto folder = std::filesystem::temp_directory_path() / ("kv-uikit-render-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    return folder;
}

RefPtr<UIColor> rgb(int hex, double alpha = 1)
{
    return UIColor::colorWithRed(((hex >> 16) & 0xff) / 255.0, ((hex >> 8) & 0xff) / 255.0, (hex & 0xff) / 255.0, alpha);
}

RefPtr<UIFont> light(double size) { return UIFont::fontWithName("HelveticaNeue-Light", size); }

template<typename View>
RefPtr<View> add(UIView* parent, RefPtr<View> view, CGRect frame)
{
    view->setFrame(frame);
    parent->addSubview(view.get());
    return view;
}

RefPtr<UILabel> addLabel(UIView* parent, CGRect frame, double fontSize, NSTextAlignment alignment)
{
    auto label = add(parent, UILabel::create(), frame);
    label->setFont(light(fontSize));
    label->setTextColor(UIColor::whiteColor());
    label->setTextAlignment(alignment);
    label->setAdjustsFontSizeToFitWidth(true);
    return label;
}

// A lock-screen wallpaper: a dusk gradient with a few bright shapes that the
// blur has to smear.
RefPtr<UIImage> wallpaper(CGSize size)
{
    return UIImage::imageWithSize(size, 2, [&](cairo_t* cr) {
        cairo_pattern_t* sky = cairo_pattern_create_linear(0, 0, size.width, size.height);
        cairo_pattern_add_color_stop_rgb(sky, 0, 0.10, 0.16, 0.42);
        cairo_pattern_add_color_stop_rgb(sky, 0.6, 0.55, 0.20, 0.50);
        cairo_pattern_add_color_stop_rgb(sky, 1, 0.98, 0.55, 0.25);
        cairo_set_source(cr, sky);
        cairo_paint(cr);
        cairo_pattern_destroy(sky);
        cairo_set_source_rgb(cr, 1, 0.85, 0.35);
        cairo_arc(cr, size.width * 0.75, size.height * 0.3, 40, 0, 2 * M_PI);
        cairo_fill(cr);
        cairo_set_source_rgb(cr, 0.2, 0.8, 0.9);
        cairo_rectangle(cr, 30, size.height * 0.55, 90, 60);
        cairo_fill(cr);
    }, "wallpaper");
}

RefPtr<UIImage> alarmIcon()
{
    return UIImage::imageWithSize(CGSizeMake(30, 30), 2, [](cairo_t* cr) {
        cairo_set_line_width(cr, 2.5);
        cairo_arc(cr, 15, 16, 11, 0, 2 * M_PI);
        cairo_stroke(cr);
        cairo_move_to(cr, 15, 9);
        cairo_line_to(cr, 15, 16);
        cairo_line_to(cr, 20, 19);
        cairo_stroke(cr);
        cairo_arc(cr, 6, 5, 4, 0, 2 * M_PI);
        cairo_arc(cr, 24, 5, 4, 0, 2 * M_PI);
        cairo_fill(cr);
    }, "Alarm");
}

RefPtr<UIImage> sunIcon()
{
    return UIImage::imageWithSize(CGSizeMake(18, 18), 2, [](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 0.8, 0.2);
        cairo_arc(cr, 9, 9, 4.5, 0, 2 * M_PI);
        cairo_fill(cr);
        cairo_set_line_width(cr, 1.5);
        for (int i = 0; i < 8; ++i) {
            double a = i * M_PI / 4;
            cairo_move_to(cr, 9 + 6.5 * std::cos(a), 9 + 6.5 * std::sin(a));
            cairo_line_to(cr, 9 + 8.5 * std::cos(a), 9 + 8.5 * std::sin(a));
        }
        cairo_stroke(cr);
    }, "Weather/Sunny");
}

RefPtr<UIImage> batteryIcon(double level)
{
    return UIImage::imageWithSize(CGSizeMake(50, 25), 2, [&](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_set_line_width(cr, 2);
        addRoundedRectangle(cr, CGRectMake(1, 1, 44, 23), 4);
        cairo_stroke(cr);
        cairo_rectangle(cr, 4, 4, 38 * level, 17);
        cairo_rectangle(cr, 46, 8, 3, 9);
        cairo_fill(cr);
    }, "Battery/Battery80");
}

RefPtr<NSAttributedString> inlineImageText(UIImage* image, const std::string& text)
{
    auto result = NSMutableAttributedString::create();
    result->appendAttributedString(NSAttributedString::attributedStringWithAttachment(make<NSTextAttachment>(image)).get());
    result->appendString(text);
    return result;
}

// The top of the assistant panel over a blurred wallpaper, with the kinds of
// content it shows: shrink-to-fit attributed clock text, an inline tinted
// icon, right-aligned weather lines, a battery icon and a rounded card.
RefPtr<UIWindow> panelScene()
{
    CGRect bounds = CGRectMake(0, 0, 375, 240);
    auto window = make<UIWindow>(bounds);
    window->setHidden(false);
    add(window.get(), make<UIImageView>(wallpaper(bounds.size)), bounds);
    add(window.get(), make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2)), bounds);

    auto clock = addLabel(window.get(), CGRectMake(20, 15, 167.5, 80), 45, NSTextAlignmentLeft);
    clock->setNumberOfLines(2);
    auto time = NSMutableAttributedString::create("9:05\n", { .font = light(45) });
    time->appendString("Saturday, November 21", { .font = light(16) });
    clock->setAttributedText(time.get());

    auto white = UIColor::whiteColor();
    auto alarm = addLabel(window.get(), CGRectMake(0, 98, 375, 20), 15, NSTextAlignmentCenter);
    alarm->setAttributedText(inlineImageText(alarmIcon()->scaledToSize(CGSizeMake(15, 15))->tintedWithColor(white.get()).get(), " 7:00 AM").get());

    auto weather = add(window.get(), UIView::create(), CGRectMake(187.5, 8.75, 167.5, 80));
    addLabel(weather.get(), CGRectMake(0, 0, 167.5, 22), 16, NSTextAlignmentRight)->setAttributedText(inlineImageText(sunIcon().get(), " Mostly Sunny").get());
    addLabel(weather.get(), CGRectMake(0, 22, 167.5, 18), 12, NSTextAlignmentRight)->setText("high 72 | low 55");
    addLabel(weather.get(), CGRectMake(0, 40, 167.5, 40), 34, NSTextAlignmentRight)->setText("68°F\n");

    add(window.get(), make<UIImageView>(batteryIcon(0.8)), CGRectMake(20, 128, 25, 12.5));
    addLabel(window.get(), CGRectMake(50, 126, 60, 16.5), 13, NSTextAlignmentLeft)->setText("76%");

    auto card = add(window.get(), UIView::create(), CGRectMake(10, 155, 355, 75));
    card->setBackgroundColor(UIColor::colorWithWhite(1, 0.12));
    card->layer().setCornerRadius(10);
    card->layer().setBorderWidth(1);
    card->layer().setBorderColor(UIColor::colorWithWhite(1, 0.3));
    addLabel(card.get(), CGRectMake(12, 8, 331, 22), 17, NSTextAlignmentLeft)->setText("Your next event is in 2 hours");
    auto bullet = UIImage::imageWithSize(CGSizeMake(8, 8), 2, [](cairo_t* cr) {
        cairo_arc(cr, 4, 4, 4, 0, 2 * M_PI);
        cairo_fill(cr);
    }, "Bullet");
    auto detail = addLabel(card.get(), CGRectMake(12, 34, 331, 34), 13, NSTextAlignmentLeft);
    detail->setNumberOfLines(2);
    detail->setLineBreakMode(NSLineBreakByTruncatingTail);
    detail->setAdjustsFontSizeToFitWidth(false);
    detail->setAttributedText(inlineImageText(bullet->tintedWithColor(rgb(0x1badf8).get()).get(),
        " Dentist at 11:00 AM, then lunch with Sam at the new place on Market Street, and a long walk back along the river")
                                  .get());
    detail->setTextColor(UIColor::colorWithWhite(1, 0.8));
    return window;
}

// Labels under every line rule, each on a pale box that shows its bounds,
// and a light blur inside a translucent card.
RefPtr<UIWindow> textRulesScene()
{
    auto window = make<UIWindow>(CGRectMake(0, 0, 320, 200));
    window->setHidden(false);
    window->setBackgroundColor(rgb(0xefeff4));
    auto addBox = [&](CGRect frame, const std::string& text, NSTextAlignment alignment, int lines, NSLineBreakMode mode) {
        auto label = add(window.get(), UILabel::create(), frame);
        label->setBackgroundColor(UIColor::whiteColor());
        label->setFont(UIFont::systemFontOfSize(12));
        label->setTextColor(rgb(0x1c1c1e));
        label->setTextAlignment(alignment);
        label->setNumberOfLines(lines);
        label->setLineBreakMode(mode);
        label->setText(text);
        return label;
    };
    const std::string sentence = "The quick brown fox jumps over the lazy dog by the river bank";
    addBox(CGRectMake(8, 8, 148, 44), sentence, NSTextAlignmentLeft, 0, NSLineBreakByWordWrapping);
    addBox(CGRectMake(164, 8, 148, 44), sentence, NSTextAlignmentJustified, 3, NSLineBreakByWordWrapping);
    addBox(CGRectMake(8, 58, 148, 18), sentence, NSTextAlignmentLeft, 1, NSLineBreakByTruncatingHead);
    addBox(CGRectMake(164, 58, 148, 18), sentence, NSTextAlignmentLeft, 1, NSLineBreakByTruncatingMiddle);
    addBox(CGRectMake(8, 82, 148, 18), "Line one\nLine two", NSTextAlignmentCenter, 1, NSLineBreakByTruncatingTail);
    addBox(CGRectMake(164, 82, 148, 18), "Short", NSTextAlignmentRight, 1, NSLineBreakByTruncatingTail);
    addBox(CGRectMake(8, 106, 148, 30), sentence, NSTextAlignmentCenter, 2, NSLineBreakByCharWrapping);
    auto shrunk = addBox(CGRectMake(164, 106, 148, 30), "Shrinks to fit the box", NSTextAlignmentLeft, 1, NSLineBreakByTruncatingTail);
    shrunk->setFont(UIFont::boldSystemFontOfSize(24));
    shrunk->setAdjustsFontSizeToFitWidth(true);
    shrunk->setMinimumScaleFactor(0.5);

    auto stripes = add(window.get(), UIView::create(), CGRectMake(8, 144, 304, 48));
    stripes->setClipsToBounds(true);
    stripes->layer().setRoundedCornerMask(CALayer::TopLeft | CALayer::BottomRight, 12);
    const int colours[] = { 0xff3b30, 0xff9500, 0xffcc00, 0x4cd964, 0x5ac8fa, 0x007aff, 0x5856d6, 0xff2d55 };
    for (int i = 0; i < 8; ++i)
        add(stripes.get(), UIView::create(), CGRectMake(i * 38, 0, 38, 48))->setBackgroundColor(rgb(colours[i]));
    auto card = add(stripes.get(), UIView::create(), CGRectMake(60, 8, 184, 32));
    card->setAlpha(0.9);
    card->layer().setCornerRadius(8);
    card->setClipsToBounds(true);
    auto blur = add(card.get(), make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(0)), CGRectMake(0, 0, 184, 32));
    auto title = add(blur->contentView(), UILabel::create(), CGRectMake(0, 0, 184, 32));
    title->setText("Extra light blur");
    title->setFont(UIFont::fontWithName("HelveticaNeue-Medium", 15));
    title->setTextAlignment(NSTextAlignmentCenter);
    return window;
}

std::vector<char> fileBytes(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

void expectMatchesReference(const UIImage& picture, const std::string& name)
{
    ReferencePicture::Paths paths { (referenceFolder / (name + ".png")).string(), name + ".png", (failureFolder / (name + ".png")).string(),
        (failureFolder / (name + ".diff.png")).string() };
    // Two in 255 per channel, on one pixel in a thousand.
    ImageTolerance tolerance { 1 - 2.0 / 255, 0.999 };
    auto policy = RecordPolicy::fromEnvironment();
    ASSERT_TRUE(policy.policy) << policy.error;
    auto verdict = ReferencePicture::check(picture, paths, tolerance, *policy.policy);
    EXPECT_TRUE(verdict.passed) << verdict.message;
    if (verdict.recorded)
        std::printf("%s\n", verdict.message.c_str());
}

} // namespace

TEST(UIRenderer, DrawsBackgroundsCornersBordersAlphaAndClipping)
{
    auto root = UIView::create(CGRectMake(0, 0, 60, 20));
    auto round = add(root.get(), UIView::create(), CGRectMake(0, 0, 20, 20));
    round->setBackgroundColor(UIColor::redColor());
    round->layer().setCornerRadius(10);
    round->layer().setBorderWidth(2);
    round->layer().setBorderColor(rgb(0x0000ff));
    auto faint = add(root.get(), UIView::create(), CGRectMake(20, 0, 20, 20));
    faint->setBackgroundColor(UIColor::whiteColor());
    faint->setAlpha(0.5);
    auto clipping = add(root.get(), UIView::create(), CGRectMake(40, 0, 20, 10));
    clipping->setClipsToBounds(true);
    clipping->layer().setRoundedCornerMask(CALayer::TopLeft, 8);
    add(clipping.get(), UIView::create(), CGRectMake(0, 0, 20, 20))->setBackgroundColor(UIColor::whiteColor());
    auto hidden = add(root.get(), UIView::create(), CGRectMake(0, 0, 60, 20));
    hidden->setBackgroundColor(UIColor::blackColor());
    hidden->setHidden(true);

    auto picture = UIRenderer::renderView(*root, 1);
    EXPECT_EQ(picture->pixelAt(0, 0).alpha, 0) << "rounded corner";
    EXPECT_EQ(picture->pixelAt(10, 10), (UIImage::Pixel { 255, 0, 0, 255 }));
    EXPECT_EQ(picture->pixelAt(10, 1), (UIImage::Pixel { 0, 0, 255, 255 })) << "border above the background";
    EXPECT_NEAR(picture->pixelAt(30, 10).alpha, 128, 1);
    EXPECT_EQ(picture->pixelAt(41, 0).alpha, 0) << "masked corner";
    EXPECT_EQ(picture->pixelAt(59, 0).alpha, 255) << "unmasked corner";
    EXPECT_EQ(picture->pixelAt(50, 15).alpha, 0) << "subview clipped";
}

TEST(UIRenderer, SameViewsGiveByteIdenticalPictures)
{
    auto folder = scratchFolder();
    auto first = UIRenderer::renderWindows({ panelScene().get() }, CGSizeMake(375, 240), 2);
    auto second = UIRenderer::renderWindows({ panelScene().get() }, CGSizeMake(375, 240), 2);
    ASSERT_FALSE(first->writePNG((folder / "first.png").string()));
    ASSERT_FALSE(second->writePNG((folder / "second.png").string()));
    EXPECT_EQ(first->pixelWidth(), 750);
    EXPECT_TRUE(fileBytes(folder / "first.png") == fileBytes(folder / "second.png"));
}

TEST(UIVisualEffectView, DarkBlurSmearsAndDarkensTheBackdrop)
{
    // Red on the left, blue on the right, a dark blur over the whole.
    auto window = make<UIWindow>(CGRectMake(0, 0, 200, 100));
    window->setHidden(false);
    add(window.get(), UIView::create(), CGRectMake(0, 0, 100, 100))->setBackgroundColor(UIColor::redColor());
    add(window.get(), UIView::create(), CGRectMake(100, 0, 100, 100))->setBackgroundColor(rgb(0x0000ff));
    auto blur = add(window.get(), make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2)), CGRectMake(0, 0, 200, 100));
    add(blur->contentView(), UIView::create(), CGRectMake(190, 90, 10, 10))->setBackgroundColor(UIColor::whiteColor());

    auto picture = UIRenderer::renderWindows({ window.get() }, CGSizeMake(200, 100), 1);
    UIImage::Pixel left = picture->pixelAt(10, 50);
    UIImage::Pixel middle = picture->pixelAt(100, 50);
    UIImage::Pixel right = picture->pixelAt(180, 50);
    // Still coloured (not a grey box), but darkened.
    EXPECT_GT(left.red, left.blue + 30);
    EXPECT_LT(left.red, 140);
    EXPECT_GT(right.blue, right.red + 30);
    // The colours run into each other at the edge.
    EXPECT_GT(middle.red, 25);
    EXPECT_GT(middle.blue, 25);
    // The content view stays sharp above the blur.
    EXPECT_EQ(picture->pixelAt(195, 95), (UIImage::Pixel { 255, 255, 255, 255 }));

    // Inside a translucent parent the blur still sees what is behind the parent.
    auto parent = add(window.get(), UIView::create(), CGRectMake(0, 0, 200, 100));
    parent->setAlpha(0.99);
    blur->removeFromSuperview();
    add(parent.get(), blur, CGRectMake(0, 0, 200, 100));
    auto faded = UIRenderer::renderWindows({ window.get() }, CGSizeMake(200, 100), 1);
    EXPECT_NEAR(faded->pixelAt(10, 50).red, left.red, 3);
}

TEST(UIRenderer, PanelMatchesItsReferencePicture)
{
    expectMatchesReference(*UIRenderer::renderWindows({ panelScene().get() }, CGSizeMake(375, 240), 2), "panel");
}

TEST(UIRenderer, TextRulesMatchTheirReferencePicture)
{
    expectMatchesReference(*UIRenderer::renderWindows({ textRulesScene().get() }, CGSizeMake(320, 200), 2), "text-rules");
}

TEST(UIRenderer, BadValuesDoNotSpoilTheRestOfThePicture)
{
    auto root = UIView::create(CGRectMake(0, 0, 40, 20));
    auto flattened = add(root.get(), UIView::create(), CGRectMake(0, 0, 20, 20));
    flattened->setBackgroundColor(UIColor::redColor());
    flattened->setTransform(CGAffineTransformMakeScale(0, 1));
    add(root.get(), UIView::create(), CGRectMake(NAN, 0, 20, 20))->setBackgroundColor(UIColor::redColor());
    auto label = add(root.get(), UILabel::create(), CGRectMake(0, 0, 40, 20));
    label->setText("bad \xff\xfe bytes \xe2\x82");
    label->setFont(UIFont::fontWithName("HelveticaNeue", 1e12));
    label->setAdjustsFontSizeToFitWidth(true);
    auto attachment = make<NSTextAttachment>(UIImage::imageWithColor(*UIColor::redColor(), CGSizeMake(2, 2)), CGRectMake(0, 0, 1e30, NAN));
    auto odd = add(root.get(), UILabel::create(), CGRectMake(0, 0, 40, 20));
    odd->setAttributedText(NSAttributedString::attributedStringWithAttachment(attachment).get());
    add(root.get(), UIView::create(), CGRectMake(20, 0, 20, 20))->setBackgroundColor(rgb(0x00ff00));

    auto picture = UIRenderer::renderView(*root, 1);
    EXPECT_EQ(picture->pixelAt(30, 10), (UIImage::Pixel { 0, 255, 0, 255 }));
    EXPECT_NE(picture->pixelAt(10, 2), (UIImage::Pixel { 255, 0, 0, 255 }));
}

TEST(UIRenderer, ShowsAnimationsInFlight)
{
    auto root = UIView::create(CGRectMake(0, 0, 40, 20));
    auto fading = add(root.get(), UIView::create(), CGRectMake(0, 0, 20, 20));
    fading->setBackgroundColor(UIColor::whiteColor());
    UIView::animateWithDuration(1, [&] {
        fading->setAlpha(0);
        fading->setFrame(CGRectMake(20, 0, 20, 20));
    });
    VirtualClock& clock = VirtualClock::shared();
    clock.advanceMonotonicTo(clock.monotonic() + 0.5);
    auto picture = UIRenderer::renderView(*root, 1);
    EXPECT_NEAR(picture->pixelAt(15, 10).alpha, 128, 1) << "half way there, half faded";
    EXPECT_EQ(picture->pixelAt(5, 10).alpha, 0);
    EXPECT_EQ(picture->pixelAt(35, 10).alpha, 0);
    clock.advanceMonotonicTo(clock.monotonic() + 0.5);
    EXPECT_EQ(UIRenderer::renderView(*root, 1)->pixelAt(30, 10).alpha, 0) << "arrived, and faded out";
}

TEST(UIRenderer, AScrollViewClipsItsScrolledContentAsUIKitDoes)
{
    auto root = UIView::create(CGRectMake(0, 0, 60, 20));
    auto strip = add(root.get(), UIScrollView::create(), CGRectMake(20, 0, 20, 20));
    EXPECT_TRUE(strip->clipsToBounds());
    strip->setContentSize(CGSizeMake(60, 20));
    add(strip.get(), UIView::create(), CGRectMake(0, 0, 60, 20))->setBackgroundColor(UIColor::whiteColor());
    strip->setContentOffset(CGPointMake(20, 0));

    auto picture = UIRenderer::renderView(*root, 1);
    EXPECT_EQ(picture->pixelAt(10, 10).alpha, 0) << "scrolled out to the left";
    EXPECT_EQ(picture->pixelAt(30, 10).alpha, 255);
    EXPECT_EQ(picture->pixelAt(50, 10).alpha, 0) << "beyond the right edge";
}
