// Pictures taken again of an unchanged screen reuse the blurred backdrops and
// the resampled wallpapers of the picture before, and must not differ from
// a picture drawn from scratch by a single bit; a change behind a blur, or a
// wallpaper drawn elsewhere, must show.

#include <UIKit/UIImageView.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIVisualEffectView.h>
#include <UIKit/UIWindow.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

// An opaque picture with detail everywhere, bigger than the images that
// keep what they drew, drawn stretched.
RefPtr<UIImage> stripes(double red)
{
    return UIImage::imageWithSize(CGSizeMake(300, 300), 1, [&](cairo_t* cr) {
        cairo_set_source_rgb(cr, red, 0.3, 0.6);
        cairo_paint(cr);
        for (int x = 0; x < 300; x += 7) {
            cairo_set_source_rgb(cr, 1 - red, x / 300.0, 0.2);
            cairo_rectangle(cr, x, 0, 3, 300);
            cairo_fill(cr);
        }
    }, "stripes");
}

bool sameBytes(const UIImage& a, const UIImage& b)
{
    if (a.pixelWidth() != b.pixelWidth() || a.pixelHeight() != b.pixelHeight())
        return false;
    for (int y = 0; y < a.pixelHeight(); ++y) {
        for (int x = 0; x < a.pixelWidth(); ++x) {
            if (!(a.pixelAt(x, y) == b.pixelAt(x, y)))
                return false;
        }
    }
    return true;
}

struct Screen {
    RefPtr<UIWindow> window = make<UIWindow>(CGRectMake(0, 0, 160, 120));
    RefPtr<UIImageView> wallpaper;
    RefPtr<UIVisualEffectView> blur;

    explicit Screen(RefPtr<UIImage> image)
    {
        window->setHidden(false);
        wallpaper = UIImageView::create(CGRectMake(0, 0, 160, 120));
        wallpaper->setImage(image);
        wallpaper->setContentMode(UIViewContentModeScaleAspectFill);
        wallpaper->setClipsToBounds(true);
        window->addSubview(wallpaper.get());
        blur = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
        blur->setFrame(CGRectMake(20, 20, 120, 80));
        window->addSubview(blur.get());
    }
    RefPtr<UIImage> picture() const { return UIRenderer::renderWindows({ window.get() }, CGSizeMake(160, 120), 2); }
};

} // namespace

TEST(RepeatedPictures, AreTheSameBytesAsPicturesDrawnFromScratch)
{
    auto image = stripes(0.9);
    Screen screen(image);
    auto first = screen.picture();
    auto second = screen.picture();
    EXPECT_EQ(screen.blur->blurCount(), 1u) << "the unchanged backdrop is not blurred again";
    EXPECT_EQ(image->drawingsKept(), 1u) << "the stretched wallpaper is copied the second time";
    EXPECT_TRUE(sameBytes(*first, *second));

    // A screen made afresh (its own image, its own blur) draws everything.
    Screen fresh(stripes(0.9));
    EXPECT_TRUE(sameBytes(*fresh.picture(), *second));

    // Moved, the wallpaper is resampled again; off the pixel grid it is
    // drawn as usual every time.
    for (double x : { 1.0, 0.25 }) {
        screen.wallpaper->setFrame(CGRectMake(x, 0, 160, 120));
        Screen moved(stripes(0.9));
        moved.wallpaper->setFrame(CGRectMake(x, 0, 160, 120));
        EXPECT_TRUE(sameBytes(*screen.picture(), *moved.picture())) << x;
        EXPECT_TRUE(sameBytes(*screen.picture(), *moved.picture())) << x;
    }
    EXPECT_EQ(image->drawingsKept(), 2u);
    EXPECT_EQ(screen.blur->blurCount(), 3u) << "the backdrop changed twice";
}

TEST(RepeatedPictures, ShowWhatChangedBehindTheBlur)
{
    Screen screen(stripes(0.9));
    auto before = screen.picture();
    screen.wallpaper->setImage(stripes(0.1));
    auto after = screen.picture();
    EXPECT_FALSE(sameBytes(*before, *after));
    EXPECT_TRUE(sameBytes(*after, *Screen(stripes(0.1)).picture()));

    // A translucent wallpaper is drawn over what is under it each time.
    screen.wallpaper->setAlpha(0.5);
    auto faded = screen.picture();
    Screen fadedFresh(stripes(0.1));
    fadedFresh.wallpaper->setAlpha(0.5);
    EXPECT_TRUE(sameBytes(*faded, *fadedFresh.picture()));
}
