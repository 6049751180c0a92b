#include <UIKit/ImageComparison.h>
#include <UIKit/RecordPolicy.h>
#include <UIKit/ReferencePicture.h>

#include <cairo.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace {

// A 10x10 picture of one colour with, optionally, one pixel of another.
RefPtr<UIImage> picture(uint32_t argb, std::optional<uint32_t> spot = std::nullopt, int width = 10, int height = 10)
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    auto* data = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(surface));
    int stride = cairo_image_surface_get_stride(surface) / 4;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            data[y * stride + x] = argb;
    }
    if (spot)
        data[3 * stride + 3] = *spot;
    cairo_surface_mark_dirty(surface);
    return make<UIImage>(surface, 1, "test");
}

constexpr uint32_t blue = 0xff0000ff;

TEST(ImageComparison, IdenticalPicturesMatchAndOnePixelOffDoesNot)
{
    auto reference = picture(blue);
    ImageComparison same(*reference, *picture(blue));
    EXPECT_TRUE(same.matches());
    EXPECT_EQ(same.differingPixels(), 0u);
    EXPECT_EQ(same.summary(), "0% of the pixels differ: 0 of 100, by up to 0 in 255");

    ImageComparison spotted(*reference, *picture(blue, 0xffffffff));
    EXPECT_FALSE(spotted.matches());
    EXPECT_EQ(spotted.differingPixels(), 1u);
    EXPECT_DOUBLE_EQ(spotted.differingShare(), 0.01);
    EXPECT_EQ(spotted.summary(), "1% of the pixels differ: 1 of 100, by up to 255 in 255");
    // One pixel in a hundred is within a 99% precision, not within 99.5%.
    EXPECT_TRUE(spotted.matches(0.99));
    EXPECT_FALSE(spotted.matches(0.995));
}

TEST(ImageComparison, PerceptualToleranceCountsTheLargestChannelDifference)
{
    auto reference = picture(0xff808080);
    // 0.98 lets through up to 5 in 255 in any channel, and no more.
    ImageComparison five(*reference, *picture(0xff808080, 0xff858080), 0.98);
    EXPECT_TRUE(five.matches());
    EXPECT_EQ(five.largestChannelDifference(), 5);
    ImageComparison six(*reference, *picture(0xff808080, 0xff808086), 0.98);
    EXPECT_FALSE(six.matches());
    // Exact by default: a difference of 1 counts.
    EXPECT_FALSE(ImageComparison(*reference, *picture(0xff808080, 0xff808081)).matches());
    // 0 accepts any colour.
    EXPECT_TRUE(ImageComparison(*reference, *picture(0xffffffff), 0).matches());
}

TEST(ImageComparison, TransparencyIsComparedAsDrawn)
{
    // Fully transparent pixels are equal whatever colour they held.
    cairo_surface_t* raw = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 10, 10);
    auto clear = make<UIImage>(raw, 1, "clear");
    EXPECT_TRUE(ImageComparison(*clear, *picture(0x00000000)).matches());
    // Half-covered red against fully covered red differs by the coverage.
    ImageComparison coverage(*picture(0x80800000), *picture(0xffff0000));
    EXPECT_FALSE(coverage.matches());
    EXPECT_EQ(coverage.largestChannelDifference(), 127);
    // A transparent pixel against an opaque one differs entirely.
    EXPECT_EQ(ImageComparison(*clear, *picture(blue)).largestChannelDifference(), 255);
}

TEST(ImageComparison, PicturesOfAnotherSizeNeverMatch)
{
    ImageComparison wider(*picture(blue), *picture(blue, std::nullopt, 12, 10), 0);
    EXPECT_FALSE(wider.sameSize());
    EXPECT_FALSE(wider.matches(0));
    EXPECT_EQ(wider.summary(), "the size differs (10x10 expected, 12x10 found)");
    // The columns only one picture has count as differing.
    EXPECT_EQ(wider.pixelCount(), 120u);
    EXPECT_EQ(wider.differingPixels(), 20u);
}

TEST(ImageComparison, DifferencePictureShowsDifferingPixelsInRedOverFadedReference)
{
    ImageComparison spotted(*picture(0xff000000), *picture(0xff000000, 0xff00ff00));
    auto difference = spotted.differencePicture();
    ASSERT_EQ(difference->pixelWidth(), 10);
    EXPECT_EQ(difference->pixelAt(3, 3), (UIImage::Pixel { 255, 0, 0, 255 }));
    // Black fades to a light grey, so that red stands out.
    UIImage::Pixel faded = difference->pixelAt(0, 0);
    EXPECT_EQ(faded.red, faded.green);
    EXPECT_GT(faded.red, 150);
}

TEST(RecordPolicy, DecidesWhenToRecord)
{
    using Step = RecordPolicy::Step;
    RecordPolicy missing(RecordMode::Missing), all(RecordMode::All), failed(RecordMode::Failed), never(RecordMode::Never);
    EXPECT_EQ(missing.firstStep(false), Step::Record);
    EXPECT_EQ(missing.firstStep(true), Step::Compare);
    EXPECT_EQ(all.firstStep(true), Step::Record);
    EXPECT_EQ(failed.firstStep(false), Step::Record);
    EXPECT_EQ(failed.firstStep(true), Step::Compare);
    EXPECT_EQ(never.firstStep(false), Step::FailMissing);
    EXPECT_EQ(never.firstStep(true), Step::Compare);
    EXPECT_TRUE(failed.rewritesDiffering());
    EXPECT_FALSE(missing.rewritesDiffering() || all.rewritesDiffering() || never.rewritesDiffering());
}

TEST(RecordPolicy, TheOptionWinsOverTheEnvironment)
{
    EXPECT_EQ(RecordPolicy::choose(std::nullopt, nullptr).policy->mode(), RecordMode::Missing);
    EXPECT_EQ(RecordPolicy::choose(std::nullopt, "").policy->mode(), RecordMode::Missing);
    EXPECT_EQ(RecordPolicy::choose(std::nullopt, "failed").policy->mode(), RecordMode::Failed);
    EXPECT_EQ(RecordPolicy::choose(RecordMode::Never, "all").policy->mode(), RecordMode::Never);
    // A mistaken environment does not matter when the option decides.
    EXPECT_EQ(RecordPolicy::choose(RecordMode::All, "sometimes").policy->mode(), RecordMode::All);
    auto wrong = RecordPolicy::choose(std::nullopt, "Failed");
    EXPECT_FALSE(wrong.policy);
    EXPECT_EQ(wrong.error, "KAVELIN_RECORD is 'Failed': expected missing, all, failed or never");
}

class ReferencePictureTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_folder = std::filesystem::temp_directory_path() / ("kv-reference-" + std::to_string(getpid()));
        std::filesystem::remove_all(m_folder);
        m_paths = { (m_folder / "ref" / "square.png").string(), "ref/square.png", (m_folder / "failed" / "square.png").string(),
            (m_folder / "failed" / "square.diff.png").string() };
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    ReferencePicture::Verdict check(const UIImage& actual, RecordMode mode, ImageTolerance tolerance = {})
    {
        return ReferencePicture::check(actual, m_paths, tolerance, RecordPolicy(mode));
    }
    bool exists(const std::string& path) const { return std::filesystem::exists(path); }

    std::filesystem::path m_folder;
    ReferencePicture::Paths m_paths;
};

TEST_F(ReferencePictureTest, RecordsMissingReferencesAndFailsSayingSo)
{
    auto verdict = check(*picture(blue), RecordMode::Never);
    EXPECT_FALSE(verdict.passed || verdict.recorded);
    EXPECT_EQ(verdict.message, "no reference picture ref/square.png (--record=never; run with --record=missing to record it)");
    EXPECT_FALSE(exists(m_paths.reference));

    verdict = check(*picture(blue), RecordMode::Missing);
    EXPECT_FALSE(verdict.passed);
    EXPECT_TRUE(verdict.recorded);
    EXPECT_EQ(verdict.message, "recorded ref/square.png");
    EXPECT_TRUE(check(*picture(blue), RecordMode::Never).passed);
    // `all` rewrites a reference that matches, and still fails.
    verdict = check(*picture(blue), RecordMode::All);
    EXPECT_TRUE(verdict.recorded && !verdict.passed);
}

TEST_F(ReferencePictureTest, MismatchLeavesWhatWasSeenAndTheDifference)
{
    check(*picture(blue), RecordMode::Missing);
    auto verdict = check(*picture(blue, 0xffffffff), RecordMode::Missing);
    EXPECT_FALSE(verdict.passed || verdict.recorded);
    EXPECT_EQ(verdict.message, "ref/square.png does not match: 1% of the pixels differ: 1 of 100, by up to 255 in 255 (seen in " + m_paths.seen
            + ", difference in " + m_paths.difference + ")");
    std::string error;
    auto seen = ReferencePicture::decode(m_paths.seen, error);
    ASSERT_TRUE(seen) << error;
    EXPECT_EQ(seen->pixelAt(3, 3), (UIImage::Pixel { 255, 255, 255, 255 }));
    auto difference = ReferencePicture::decode(m_paths.difference, error);
    ASSERT_TRUE(difference) << error;
    EXPECT_EQ(difference->pixelAt(3, 3), (UIImage::Pixel { 255, 0, 0, 255 }));
    // The reference itself is untouched, and a tolerance lets the same picture pass
    // and clears the stale pictures of the failure.
    EXPECT_TRUE(check(*picture(blue), RecordMode::Never).passed);
    EXPECT_TRUE(check(*picture(blue, 0xffffffff), RecordMode::Never, { 1, 0.99 }).passed);
    EXPECT_FALSE(exists(m_paths.seen) || exists(m_paths.difference));
}

TEST_F(ReferencePictureTest, FailedModeRewritesOnlyDifferingReferences)
{
    check(*picture(blue), RecordMode::Missing);
    EXPECT_TRUE(check(*picture(blue), RecordMode::Failed).passed);
    auto verdict = check(*picture(0xff00ff00), RecordMode::Failed);
    EXPECT_TRUE(verdict.recorded && !verdict.passed);
    EXPECT_EQ(verdict.message, "recorded ref/square.png (100% of the pixels differ: 100 of 100, by up to 255 in 255)");
    EXPECT_TRUE(check(*picture(0xff00ff00), RecordMode::Never).passed);
}

TEST_F(ReferencePictureTest, PicturesThatCannotBeWrittenAreToldAbout)
{
    check(*picture(blue), RecordMode::Missing);
    // A file stands where the failure pictures' folder should be.
    std::ofstream((m_folder / "failed").string()) << "in the way";
    auto verdict = check(*picture(0xff00ff00), RecordMode::Never);
    EXPECT_FALSE(verdict.passed);
    EXPECT_TRUE(verdict.writtenFiles.empty());
    EXPECT_NE(verdict.message.find("ref/square.png does not match: 100% of the pixels differ: 100 of 100, by up to 255 in 255; cannot write "),
        std::string::npos) << verdict.message;

    m_paths.reference = (m_folder / "failed" / "new.png").string();
    verdict = check(*picture(blue), RecordMode::Missing);
    EXPECT_FALSE(verdict.passed || verdict.recorded);
    EXPECT_NE(verdict.message.find("recorded ref/square.png; cannot write "), std::string::npos) << verdict.message;
}

TEST_F(ReferencePictureTest, AReferenceThatIsNotAPictureFails)
{
    std::filesystem::create_directories(m_folder / "ref");
    std::ofstream(m_paths.reference) << "not a picture";
    auto verdict = check(*picture(blue), RecordMode::Missing);
    EXPECT_FALSE(verdict.passed || verdict.recorded);
    EXPECT_EQ(verdict.message, "ref/square.png: cannot read " + m_paths.reference + ": it is not a PNG picture");
}

}
