#include "ScreenPicture.h"

#include <cairo.h>
#include <png.h>

#include <cstdint>
#include <csetjmp>
#include <vector>
#include <zlib.h>

static void appendBytes(png_structp png, png_bytep data, png_size_t length)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), length);
}

// Cairo keeps native-endian 32-bit pixels with premultiplied alpha.
static void unpremultiply(const uint32_t* in, int width, bool opaque, uint8_t* out)
{
    for (int x = 0; x < width; ++x) {
        uint32_t pixel = in[x];
        uint8_t alpha = pixel >> 24;
        uint8_t red = (pixel >> 16) & 0xff, green = (pixel >> 8) & 0xff, blue = pixel & 0xff;
        if (alpha != 0xff && alpha != 0) {
            red = static_cast<uint8_t>((red * 255 + alpha / 2) / alpha);
            green = static_cast<uint8_t>((green * 255 + alpha / 2) / alpha);
            blue = static_cast<uint8_t>((blue * 255 + alpha / 2) / alpha);
        }
        *out++ = red;
        *out++ = green;
        *out++ = blue;
        if (!opaque)
            *out++ = alpha;
    }
}

std::string ScreenPicture::png(cairo_surface_t* surface)
{
    if (!surface || cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE || cairo_image_surface_get_format(surface) != CAIRO_FORMAT_ARGB32)
        return {};
    cairo_surface_flush(surface);
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    const unsigned char* pixels = cairo_image_surface_get_data(surface);
    if (!pixels || width <= 0 || height <= 0)
        return {};
    auto row = [&](int y) { return reinterpret_cast<const uint32_t*>(pixels + static_cast<size_t>(y) * stride); };
    bool opaque = true;
    for (int y = 0; y < height && opaque; ++y) {
        for (int x = 0; x < width; ++x) {
            if (row(y)[x] >> 24 != 0xff) {
                opaque = false;
                break;
            }
        }
    }

    std::string bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return {};
    }
    std::vector<uint8_t> line(static_cast<size_t>(width) * 4);
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return {};
    }
    png_set_write_fn(png, &bytes, appendBytes, nullptr);
    png_set_compression_level(png, Z_BEST_SPEED);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_IHDR(png, info, width, height, 8, opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
        PNG_FILTER_TYPE_BASE);
    png_write_info(png, info);
    for (int y = 0; y < height; ++y) {
        unpremultiply(row(y), width, opaque, line.data());
        png_write_row(png, line.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return bytes;
}
