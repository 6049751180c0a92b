#include <UIKit/RenderContext.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UIRenderer.h>

#include <Foundation/VirtualClock.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

std::filesystem::path scratchFolder()
{
    auto folder = std::filesystem::temp_directory_path() / ("kv-uikit-image-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    return folder;
}

// A 40 x 20 picture: opaque orange on the left half, transparent on the right.
RefPtr<UIImage> halfOrange(double scale = 1)
{
    return UIImage::imageWithSize(CGSizeMake(40 / scale, 20 / scale), scale, [&](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 0.5, 0);
        cairo_rectangle(cr, 0, 0, 20 / scale, 20 / scale);
        cairo_fill(cr);
    }, "half");
}

void advanceClock(double seconds)
{
    VirtualClock& clock = VirtualClock::shared();
    clock.advanceMonotonicTo(clock.monotonic() + seconds);
}

} // namespace

TEST(UIImage, LoadsPNGsWithTheirResourceNameAndScale)
{
    auto bundle = scratchFolder() / "Kavelin.bundle";
    std::filesystem::create_directories(bundle / "Battery");
    ASSERT_FALSE(halfOrange()->writePNG((bundle / "Battery" / "Battery60.png").string()));
    ASSERT_FALSE(halfOrange()->writePNG((bundle / "Alarm@2x.png").string()));

    auto battery = UIImage::imageWithContentsOfFile((bundle / "Battery" / "Battery60.png").string());
    ASSERT_TRUE(battery);
    EXPECT_EQ(battery->name(), "Battery/Battery60");
    EXPECT_EQ(battery->size(), CGSizeMake(40, 20));
    EXPECT_EQ(battery->pixelAt(5, 5), (UIImage::Pixel { 255, 128, 0, 255 }));
    EXPECT_EQ(battery->pixelAt(30, 5).alpha, 0);

    // Asked for by the plain name, the Retina file is found and halves the size.
    auto alarm = UIImage::imageWithContentsOfFile((bundle / "Alarm.png").string());
    ASSERT_TRUE(alarm);
    EXPECT_EQ(alarm->name(), "Alarm");
    EXPECT_EQ(alarm->scale(), 2);
    EXPECT_EQ(alarm->size(), CGSizeMake(20, 10));

    std::ofstream((bundle / "Broken.png").string()) << "not a picture";
    EXPECT_FALSE(UIImage::imageWithContentsOfFile((bundle / "Broken.png").string()));
    EXPECT_FALSE(UIImage::imageWithContentsOfFile((bundle / "Missing.png").string()));
    EXPECT_TRUE(halfOrange()->writePNG((bundle / "no-such-folder" / "x.png").string()).has_value());
}

TEST(UIImage, AFileLoadedAgainIsDecodedOnlyWhenItChanged)
{
    auto file = scratchFolder() / "Reloaded.png";
    ASSERT_FALSE(halfOrange()->writePNG(file.string()));

    auto first = UIImage::imageWithContentsOfFile(file.string());
    size_t decoded = UIImage::decodedFileCount();
    auto again = UIImage::imageWithContentsOfFile(file.string());
    EXPECT_EQ(again.get(), first.get());
    EXPECT_EQ(UIImage::decodedFileCount(), decoded);

    // A rewritten file (another size, so its version differs even on a coarse
    // clock) is read again.
    ASSERT_FALSE(UIImage::imageWithColor(*UIColor::colorWithRed(0, 0, 1, 1), CGSizeMake(8, 8))->writePNG(file.string()));
    auto rewritten = UIImage::imageWithContentsOfFile(file.string());
    ASSERT_TRUE(rewritten);
    EXPECT_NE(rewritten.get(), first.get());
    EXPECT_EQ(rewritten->size(), CGSizeMake(8, 8));
    EXPECT_EQ(rewritten->pixelAt(4, 4), (UIImage::Pixel { 0, 0, 255, 255 }));
    EXPECT_EQ(UIImage::decodedFileCount(), decoded + 1);

    std::filesystem::remove(file);
    EXPECT_FALSE(UIImage::imageWithContentsOfFile(file.string()));
}

// Loading reads the file and the size from its header; the pixels are
// decoded once, when first needed, from the bytes read at loading, and a
// copy made before then gives the pixels it would have given at once. A copy
// of that copy is made at once (no chain of pending copies is kept).
TEST(UIImage, FilesAreDecodedWhenTheirPixelsAreFirstNeeded)
{
    auto file = scratchFolder() / "Lazy@2x.png";
    ASSERT_FALSE(halfOrange()->writePNG(file.string()));
    auto expectedCopy = halfOrange(2)->scaledToSize(CGSizeMake(7.5, 7.5));

    size_t decoded = UIImage::decodedFileCount();
    auto image = UIImage::imageWithContentsOfFile(file.string());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), CGSizeMake(20, 10));
    EXPECT_EQ(image->pixelWidth(), 40);
    auto copy = image->scaledToSize(CGSizeMake(7.5, 7.5));
    EXPECT_EQ(copy->size(), expectedCopy->size());
    EXPECT_EQ(UIImage::decodedFileCount(), decoded) << "nothing drawn yet";

    // Rewritten before the first drawing: the image keeps what it was loaded from.
    ASSERT_FALSE(UIImage::imageWithColor(*UIColor::colorWithRed(0, 0, 1, 1), CGSizeMake(40, 20))->writePNG(file.string()));
    for (int y = 0; y < copy->pixelHeight(); ++y) {
        for (int x = 0; x < copy->pixelWidth(); ++x)
            ASSERT_EQ(copy->pixelAt(x, y), expectedCopy->pixelAt(x, y)) << x << "," << y;
    }
    EXPECT_EQ(image->pixelAt(5, 5), (UIImage::Pixel { 255, 128, 0, 255 }));
    EXPECT_EQ(UIImage::decodedFileCount(), decoded + 1);

    auto again = UIImage::imageWithContentsOfFile(file.string());
    auto tinted = again->scaledToSize(CGSizeMake(7.5, 7.5))->tintedWithColor(UIColor::whiteColor().get());
    EXPECT_EQ(UIImage::decodedFileCount(), decoded + 2) << "the tinted copy of a copy is made at once";
    EXPECT_EQ(tinted->pixelAt(2, 2), (UIImage::Pixel { 255, 255, 255, 255 }));

    // A file that starts as a PNG but is cut short keeps its size and draws nothing.
    std::string bytes;
    {
        std::ifstream in(file, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    std::ofstream((scratchFolder() / "Cut.png").string(), std::ios::binary) << bytes.substr(0, 40);
    auto cut = UIImage::imageWithContentsOfFile((scratchFolder() / "Cut.png").string());
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->size(), CGSizeMake(40, 20));
    EXPECT_EQ(cut->pixelAt(5, 5).alpha, 0);
    std::filesystem::remove(file);
    std::filesystem::remove(scratchFolder() / "Cut.png");
}

TEST(UIImage, ScalingAndTintingKeepTheNameAndTheShape)
{
    auto image = halfOrange();
    auto small = image->scaledToSize(CGSizeMake(15, 15));
    ASSERT_TRUE(small);
    EXPECT_EQ(small->name(), "half");
    EXPECT_EQ(small->size(), CGSizeMake(15, 15));
    // Enough pixels stay for a sharp picture on a Retina screen, no more than 3x.
    EXPECT_EQ(small->scale(), 3);
    EXPECT_EQ(image->scaledToSize(CGSizeMake(100, 100))->scale(), 1);
    EXPECT_FALSE(image->scaledToSize(CGSizeMake(0, 10)));
    // A size that is no whole number of pixels stays the size asked for, and
    // draws into exactly that many points.
    auto bullet = image->scaledToSize(CGSizeMake(7.5, 7.5));
    EXPECT_EQ(bullet->size(), CGSizeMake(7.5, 7.5));
    EXPECT_EQ(bullet->scale(), 3);
    EXPECT_EQ(bullet->tintedWithColor(UIColor::whiteColor().get())->size(), CGSizeMake(7.5, 7.5));
    auto solid = UIImage::imageWithColor(*UIColor::whiteColor(), CGSizeMake(10, 10))->scaledToSize(CGSizeMake(7.5, 7.5));
    auto canvas = UIImage::imageWithSize(CGSizeMake(8, 8), 2, [&](cairo_t* cr) { solid->drawInRect(cr, CGRectMake(0, 0, 8, 8)); }, "canvas");
    EXPECT_EQ(canvas->pixelAt(15, 15).alpha, 255) << "the image fills the rectangle to its last pixel";

    auto white = UIColor::whiteColor();
    auto tinted = small->tintedWithColor(white.get());
    EXPECT_EQ(tinted->name(), "half");
    EXPECT_EQ(tinted->tintColor()->hexString(), "#ffffffff");
    EXPECT_EQ(tinted->pixelAt(5, 20), (UIImage::Pixel { 255, 255, 255, 255 }));
    EXPECT_EQ(tinted->pixelAt(40, 20).alpha, 0);
    // Scaling a tinted image keeps its tint.
    EXPECT_TRUE(tinted->scaledToSize(CGSizeMake(30, 30))->tintColor());
}

TEST(UIImage, MergedColourIsTheAverageOfOpaquePixels)
{
    auto solid = UIImage::imageWithColor(*UIColor::colorWithRed(27 / 255.0, 173 / 255.0, 248 / 255.0, 1), CGSizeMake(8, 8));
    EXPECT_EQ(solid->mergedColor()->hexString(), "#1badf8ff");
    // Transparent pixels do not pull the colour towards black.
    EXPECT_EQ(halfOrange()->mergedColor()->hexString(), "#ff8000ff");
    auto stripes = UIImage::imageWithSize(CGSizeMake(2, 1), 1, [](cairo_t* cr) {
        cairo_set_source_rgb(cr, 1, 0, 0);
        cairo_rectangle(cr, 0, 0, 1, 1);
        cairo_fill(cr);
        cairo_set_source_rgb(cr, 0, 0, 1);
        cairo_rectangle(cr, 1, 0, 1, 1);
        cairo_fill(cr);
    }, "stripes");
    EXPECT_EQ(stripes->mergedColor()->hexString(), "#800080ff");
    EXPECT_EQ(UIImage::imageWithColor(*UIColor::clearColor(), CGSizeMake(4, 4))->mergedColor()->alpha(), 0);

    // Kept with the image: asked twice a second by the music timers.
    EXPECT_EQ(stripes->mergedColor().get(), stripes->mergedColor().get());
}

TEST(UIImageView, AnimationFrameFollowsTheVirtualClock)
{
    auto view = UIImageView::create(CGRectMake(0, 0, 10, 10));
    std::vector<RefPtr<UIImage>> frames;
    for (int i = 0; i <= 10; ++i) {
        frames.push_back(UIImage::imageWithColor(*UIColor::blackColor(), CGSizeMake(1, 1)));
        frames.back()->setName("Ampero/BoltAnimated/" + std::to_string(i));
    }
    auto still = UIImage::imageWithColor(*UIColor::whiteColor(), CGSizeMake(1, 1));
    view->setImage(still);
    view->setAnimationImages(frames);
    view->setAnimationDuration(1.8);
    EXPECT_EQ(view->currentAnimationFrame(), -1);
    EXPECT_EQ(view->displayedImage(), still.get());

    view->startAnimating();
    EXPECT_TRUE(view->isAnimating());
    EXPECT_EQ(view->currentAnimationFrame(), 0);
    advanceClock(0.9); // half way through eleven frames
    EXPECT_EQ(view->currentAnimationFrame(), 5);
    advanceClock(0.9 + 0.1); // into the second pass
    EXPECT_EQ(view->currentAnimationFrame(), 0);
    nlohmann::json node;
    view->dumpProperties(node);
    EXPECT_EQ(node["image"], "Ampero/BoltAnimated/0");
    EXPECT_EQ(node["animating"], true);
    EXPECT_EQ(node["frames"], 11);

    view->stopAnimating();
    EXPECT_EQ(view->displayedImage(), still.get());

    // A limited number of passes ends by itself.
    view->setAnimationRepeatCount(2);
    view->startAnimating();
    advanceClock(3.5);
    EXPECT_TRUE(view->isAnimating());
    advanceClock(0.2);
    EXPECT_FALSE(view->isAnimating());
    EXPECT_EQ(view->currentAnimationFrame(), -1);
}

TEST(UIImageView, ContentModesPlaceTheImage)
{
    auto view = UIImageView::create(CGRectMake(0, 0, 40, 40));
    view->setImage(halfOrange());
    auto pixel = [&](int x, int y) { return UIRenderer::renderView(*view, 1)->pixelAt(x, y).alpha; };
    // Stretched: the orange half covers the left half, top to bottom.
    EXPECT_EQ(pixel(10, 2), 255);
    EXPECT_EQ(pixel(30, 2), 0);
    // Fitted: 40 x 20 in the middle.
    view->setContentMode(UIViewContentModeScaleAspectFit);
    EXPECT_EQ(pixel(10, 5), 0);
    EXPECT_EQ(pixel(10, 15), 255);
    // Centred at its own size.
    view->setImage(halfOrange()->scaledToSize(CGSizeMake(20, 10)));
    view->setContentMode(UIViewContentModeCenter);
    EXPECT_EQ(pixel(12, 20), 255);
    EXPECT_EQ(pixel(5, 20), 0);
    // Template images take the tint.
    view->setImage(halfOrange()->imageWithRenderingMode(UIImageRenderingModeAlwaysTemplate));
    view->setContentMode(UIViewContentModeScaleToFill);
    view->setTintColor(UIColor::colorWithRed(0, 1, 0, 1));
    EXPECT_EQ(UIRenderer::renderView(*view, 1)->pixelAt(5, 5), (UIImage::Pixel { 0, 255, 0, 255 }));
}
