#include "ImageComparison.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// Premultiplied ARGB as cairo keeps it; transparent outside the picture.
class PixelReader {
public:
    explicit PixelReader(const UIImage& image)
        : m_surface(image.cairoSurface())
        , m_width(image.pixelWidth())
        , m_height(image.pixelHeight())
    {
        cairo_surface_flush(m_surface);
        m_data = cairo_image_surface_get_data(m_surface);
        m_stride = cairo_image_surface_get_stride(m_surface);
        // A surface without alpha leaves the top byte undefined: it is opaque.
        m_opaque = cairo_image_surface_get_format(m_surface) == CAIRO_FORMAT_RGB24;
    }

    uint32_t at(int x, int y) const
    {
        if (x >= m_width || y >= m_height || !m_data)
            return 0;
        uint32_t argb = reinterpret_cast<const uint32_t*>(m_data + static_cast<size_t>(y) * m_stride)[x];
        return m_opaque ? argb | 0xff000000u : argb;
    }

private:
    cairo_surface_t* m_surface;
    int m_width;
    int m_height;
    const unsigned char* m_data { nullptr };
    int m_stride { 0 };
    bool m_opaque { false };
};

int channelDifference(uint32_t a, uint32_t b)
{
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8)
        largest = std::max(largest, std::abs(int((a >> shift) & 0xff) - int((b >> shift) & 0xff)));
    return largest;
}

}

ImageComparison::ImageComparison(const UIImage& reference, const UIImage& actual, double perceptual)
    : m_reference(const_cast<UIImage*>(&reference))
    , m_width(std::max(reference.pixelWidth(), actual.pixelWidth()))
    , m_height(std::max(reference.pixelHeight(), actual.pixelHeight()))
    , m_actualWidth(actual.pixelWidth())
    , m_actualHeight(actual.pixelHeight())
    , m_sameSize(reference.pixelWidth() == actual.pixelWidth() && reference.pixelHeight() == actual.pixelHeight())
{
    m_pixelCount = size_t(m_width) * size_t(m_height);
    m_differs.assign(m_pixelCount, 0);
    // A channel may differ by this much and the pixel still match; the small
    // allowance keeps perceptual = 1 - 2/255 from allowing only 1 by rounding.
    int allowed = static_cast<int>(std::floor((1 - std::clamp(perceptual, 0.0, 1.0)) * 255 + 1e-9));
    PixelReader expected(reference);
    PixelReader found(actual);
    int commonWidth = std::min(reference.pixelWidth(), actual.pixelWidth());
    int commonHeight = std::min(reference.pixelHeight(), actual.pixelHeight());
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            bool differs;
            if (x < commonWidth && y < commonHeight) {
                int difference = channelDifference(expected.at(x, y), found.at(x, y));
                m_largestChannelDifference = std::max(m_largestChannelDifference, difference);
                differs = difference > allowed;
            } else {
                differs = true;
            }
            if (differs) {
                m_differs[size_t(y) * m_width + x] = 1;
                ++m_differingPixels;
            }
        }
    }
}

double ImageComparison::differingShare() const
{
    return m_pixelCount ? double(m_differingPixels) / double(m_pixelCount) : 0;
}

bool ImageComparison::matches(double precision) const
{
    if (!m_sameSize)
        return false;
    // The same rounding allowance: precision = 0.99 on 100 pixels takes 99.
    double matching = double(m_pixelCount - m_differingPixels);
    return matching + 1e-9 >= std::clamp(precision, 0.0, 1.0) * double(m_pixelCount);
}

static std::string percentage(double share)
{
    double percent = share * 100;
    // Never "0%" nor "100%" for a share that is neither.
    if (percent > 0 && percent < 0.01)
        return "less than 0.01%";
    if (percent < 100 && percent > 99.99)
        return "more than 99.99%";
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", percent);
    std::string shown = text;
    // "1.50" reads as "1.5", "2.00" as "2".
    while (shown.back() == '0')
        shown.pop_back();
    if (shown.back() == '.')
        shown.pop_back();
    return shown + "%";
}

static std::string sizeText(int width, int height) { return std::to_string(width) + "x" + std::to_string(height); }

std::string ImageComparison::summary() const
{
    if (!m_sameSize)
        return "the size differs (" + sizeText(m_reference->pixelWidth(), m_reference->pixelHeight()) + " expected, " + sizeText(m_actualWidth, m_actualHeight) + " found)";
    return percentage(differingShare()) + " of the pixels differ: " + std::to_string(m_differingPixels) + " of " + std::to_string(m_pixelCount)
        + ", by up to " + std::to_string(m_largestChannelDifference) + " in 255";
}

RefPtr<UIImage> ImageComparison::differencePicture() const
{
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, m_width, m_height);
    unsigned char* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    PixelReader reference(*m_reference);
    for (int y = 0; y < m_height; ++y) {
        auto* row = reinterpret_cast<uint32_t*>(data + static_cast<size_t>(y) * stride);
        for (int x = 0; x < m_width; ++x) {
            if (m_differs[size_t(y) * m_width + x]) {
                row[x] = 0xffff0000u;
                continue;
            }
            // The reference's brightness over white, faded so that red stands out.
            uint32_t argb = reference.at(x, y);
            int alpha = int(argb >> 24);
            int red = int((argb >> 16) & 0xff) + 255 - alpha;
            int green = int((argb >> 8) & 0xff) + 255 - alpha;
            int blue = int(argb & 0xff) + 255 - alpha;
            int brightness = (red * 299 + green * 587 + blue * 114) / 1000;
            uint32_t grey = uint32_t(255 - (255 - brightness) * 3 / 10);
            row[x] = 0xff000000u | grey << 16 | grey << 8 | grey;
        }
    }
    cairo_surface_mark_dirty(surface);
    return make<UIImage>(surface, m_reference->scale(), "difference");
}
