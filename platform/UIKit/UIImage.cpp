#include "UIImage.h"

#include <Foundation/NSFileManager.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <mutex>
#include <sys/stat.h>

OBJC_IMPLEMENT_CLASS(UIImage, NSObject)
{
    c.classMethod<&UIImage::imageWithContentsOfFile>("imageWithContentsOfFile:");
    c.method<&UIImage::size>("size");
    c.method<&UIImage::scale>("scale");
    c.method<&UIImage::mergedColor>("mergedColor");
    c.method<&UIImage::imageWithRenderingMode>("imageWithRenderingMode:");
}

static cairo_surface_t* createSurface(int width, int height)
{
    return cairo_image_surface_create(CAIRO_FORMAT_ARGB32, std::max(1, width), std::max(1, height));
}

UIImage::UIImage(cairo_surface_t* surface, double scale, std::string name)
    : m_surface(surface)
    , m_scale(scale > 0 ? scale : 1)
    , m_name(std::move(name))
{
    m_size = { pixelWidth() / m_scale, pixelHeight() / m_scale };
}

UIImage::~UIImage()
{
    if (m_surface)
        cairo_surface_destroy(m_surface);
}

int UIImage::pixelWidth() const { return cairo_image_surface_get_width(m_surface); }
int UIImage::pixelHeight() const { return cairo_image_surface_get_height(m_surface); }

// "…/KavelinBundle.bundle/Battery/Battery60@2x.png" is the resource
// "Battery/Battery60"; a file outside a bundle is named by its base name.
static std::string resourceName(const std::string& path)
{
    std::string name = path;
    if (size_t bundle = name.rfind(".bundle/"); bundle != std::string::npos)
        name = name.substr(bundle + 8);
    else
        name = std::filesystem::path(name).filename().string();
    if (size_t dot = name.rfind('.'); dot != std::string::npos && name.find('/', dot) == std::string::npos)
        name.resize(dot);
    for (const char* suffix : { "@2x", "@3x" }) {
        if (name.ends_with(suffix))
            name.resize(name.size() - 3);
    }
    return name;
}

static double scaleFromFileName(const std::string& path)
{
    std::string stem = std::filesystem::path(path).stem().string();
    if (stem.ends_with("@3x"))
        return 3;
    if (stem.ends_with("@2x"))
        return 2;
    return 1;
}

// Every table reload asks again for the same few icons and glyphs; inflating
// their PNGs each time was most of a reload's cost. A decoded file is kept
// with the size and modification time it had, so that a file rewritten on
// disk is decoded again. Images are immutable, so the same object can be
// answered. The map stays small: few files are loaded, and big pictures (the
// wallpaper, read once at boot) are not kept.
namespace {

struct FileVersion {
    long long modificationTime { 0 };
    long long size { 0 };
    friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

struct DecodedFile {
    FileVersion version;
    RefPtr<UIImage> image;
};

constexpr size_t decodedFileLimit = 64;
constexpr size_t decodedFileLargestBytes = 512 * 1024;

std::mutex& decodedFilesLock()
{
    static auto* lock = new std::mutex();
    return *lock;
}

std::map<std::string, DecodedFile>& decodedFiles()
{
    static auto* files = new std::map<std::string, DecodedFile>();
    return *files;
}

size_t& decodedFileTotal()
{
    static size_t total = 0;
    return total;
}

RefPtr<UIImage> cachedDecodedFile(const std::string& key, const FileVersion& version)
{
    std::lock_guard lock(decodedFilesLock());
    auto found = decodedFiles().find(key);
    if (found == decodedFiles().end() || found->second.version != version)
        return nullptr;
    return found->second.image;
}

void cacheDecodedFile(const std::string& key, const FileVersion& version, const RefPtr<UIImage>& image)
{
    size_t bytes = static_cast<size_t>(image->pixelWidth()) * image->pixelHeight() * 4;
    std::lock_guard lock(decodedFilesLock());
    auto& files = decodedFiles();
    if (bytes > decodedFileLargestBytes) {
        files.erase(key);
        return;
    }
    if (files.size() >= decodedFileLimit && !files.contains(key))
        files.erase(files.begin());
    files[key] = { version, image };
}

RefPtr<UIImage> decodePNG(const std::string& file, std::string name)
{
    {
        std::lock_guard lock(decodedFilesLock());
        ++decodedFileTotal();
    }
    cairo_surface_t* loaded = cairo_image_surface_create_from_png(file.c_str());
    if (cairo_surface_status(loaded) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(loaded);
        return nullptr;
    }
    // Opaque PNGs load as RGB24; keep every image in one format.
    cairo_surface_t* surface = createSurface(cairo_image_surface_get_width(loaded), cairo_image_surface_get_height(loaded));
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_surface(cr, loaded, 0, 0);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(loaded);
    return make<UIImage>(surface, scaleFromFileName(file), std::move(name));
}

} // namespace

RefPtr<UIImage> UIImage::imageWithContentsOfFile(const std::string& path)
{
    if (path.empty())
        return nullptr;
    // Paths are the device's: they resolve under the device root. The
    // simulator's own artwork, which is not on the device, is read where it is.
    std::vector<std::string> candidates;
    for (const std::string& base : { NSFileManager::hostPath(path), path }) {
        std::filesystem::path file(base);
        if (scaleFromFileName(base) == 1) {
            for (const char* suffix : { "@2x", "@3x" })
                candidates.push_back((file.parent_path() / (file.stem().string() + suffix + file.extension().string())).string());
        }
        candidates.push_back(base);
    }
    for (auto& candidate : candidates) {
        struct stat status;
        if (::stat(candidate.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
            continue;
        FileVersion version { status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec, static_cast<long long>(status.st_size) };
        std::string name = resourceName(path);
        std::string key = candidate + '\n' + name;
        if (auto cached = cachedDecodedFile(key, version))
            return cached;
        auto image = decodePNG(candidate, name);
        if (image)
            cacheDecodedFile(key, version, image);
        return image;
    }
    return nullptr;
}

size_t UIImage::decodedFileCount()
{
    std::lock_guard lock(decodedFilesLock());
    return decodedFileTotal();
}

RefPtr<UIImage> UIImage::imageWithSize(CGSize size, double scale, const std::function<void(cairo_t*)>& draw, std::string name)
{
    if (!(size.width > 0 && size.height > 0 && scale > 0) || size.width * scale > 16384 || size.height * scale > 16384)
        return nullptr;
    cairo_surface_t* surface = createSurface(int(std::ceil(size.width * scale - 1e-9)), int(std::ceil(size.height * scale - 1e-9)));
    cairo_t* cr = cairo_create(surface);
    cairo_scale(cr, scale, scale);
    if (draw)
        draw(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    auto image = make<UIImage>(surface, scale, std::move(name));
    // The size asked for, even when it is not a whole number of pixels (7.5
    // points at 3x): the last pixel row and column are then partly covered.
    image->m_size = size;
    return image;
}

RefPtr<UIImage> UIImage::imageWithColor(const UIColor& color, CGSize size, double scale, std::string name)
{
    return imageWithSize(size, scale, [&](cairo_t* cr) {
        cairo_set_source_rgba(cr, color.red(), color.green(), color.blue(), color.alpha());
        cairo_paint(cr);
    }, std::move(name));
}

RefPtr<UIImage> UIImage::derived(cairo_surface_t* surface, double scale) const
{
    auto image = make<UIImage>(surface, scale, m_name);
    image->m_size = m_size;
    image->m_tintColor = m_tintColor;
    image->m_renderingMode = m_renderingMode;
    return image;
}

RefPtr<UIImage> UIImage::imageWithRenderingMode(UIImageRenderingMode mode) const
{
    cairo_surface_t* surface = createSurface(pixelWidth(), pixelHeight());
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_surface(cr, m_surface, 0, 0);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_paint(cr);
    cairo_destroy(cr);
    auto image = derived(surface, m_scale);
    image->m_renderingMode = mode;
    return image;
}

RefPtr<UIImage> UIImage::scaledToSize(CGSize size) const
{
    if (!(size.width > 0 && size.height > 0) || !std::isfinite(size.width) || !std::isfinite(size.height))
        return nullptr;
    double density = std::max(pixelWidth() / size.width, pixelHeight() / size.height);
    double scale = std::clamp(std::ceil(density - 1e-6), 1.0, 3.0);
    auto image = imageWithSize(size, scale, [&](cairo_t* cr) { drawInRect(cr, CGRectMake(0, 0, size.width, size.height)); }, m_name);
    if (!image)
        return nullptr;
    image->m_tintColor = m_tintColor;
    image->m_renderingMode = m_renderingMode;
    return image;
}

RefPtr<UIImage> UIImage::tintedWithColor(const UIColor* color) const
{
    if (!color)
        return derived(cairo_surface_reference(m_surface), m_scale);
    cairo_surface_t* surface = createSurface(pixelWidth(), pixelHeight());
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgba(cr, color->red(), color->green(), color->blue(), color->alpha());
    cairo_mask_surface(cr, m_surface, 0, 0);
    cairo_destroy(cr);
    auto image = derived(surface, m_scale);
    image->m_tintColor = make<UIColor>(color->red(), color->green(), color->blue(), color->alpha());
    return image;
}

UIImage::Pixel UIImage::pixelAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= pixelWidth() || y >= pixelHeight())
        return {};
    cairo_surface_flush(m_surface);
    const unsigned char* row = cairo_image_surface_get_data(m_surface) + static_cast<size_t>(y) * cairo_image_surface_get_stride(m_surface);
    uint32_t argb = reinterpret_cast<const uint32_t*>(row)[x];
    uint8_t alpha = argb >> 24;
    if (!alpha)
        return {};
    auto unpremultiply = [alpha](uint32_t c) { return static_cast<uint8_t>(std::min<uint32_t>(255, (c * 255 + alpha / 2) / alpha)); };
    return { unpremultiply((argb >> 16) & 0xff), unpremultiply((argb >> 8) & 0xff), unpremultiply(argb & 0xff), alpha };
}

RefPtr<UIColor> UIImage::mergedColor() const
{
    if (!m_mergedColor)
        m_mergedColor = computeMergedColor();
    return m_mergedColor;
}

RefPtr<UIColor> UIImage::computeMergedColor() const
{
    double red = 0;
    double green = 0;
    double blue = 0;
    size_t count = 0;
    for (int y = 0; y < pixelHeight(); ++y) {
        for (int x = 0; x < pixelWidth(); ++x) {
            Pixel pixel = pixelAt(x, y);
            if (pixel.alpha < 128)
                continue;
            red += pixel.red;
            green += pixel.green;
            blue += pixel.blue;
            ++count;
        }
    }
    if (!count)
        return UIColor::clearColor();
    return UIColor::colorWithRed(red / count / 255, green / count / 255, blue / count / 255, 1);
}

void UIImage::drawInRect(cairo_t* cr, CGRect rect, double alpha) const
{
    if (!(rect.size.width > 0 && rect.size.height > 0) || !std::isfinite(rect.origin.x) || !std::isfinite(rect.origin.y)
        || !std::isfinite(rect.size.width) || !std::isfinite(rect.size.height))
        return;
    cairo_save(cr);
    cairo_translate(cr, rect.origin.x, rect.origin.y);
    // The image's size in pixels, which a partly covered last pixel exceeds.
    double width = m_size.width * m_scale, height = m_size.height * m_scale;
    cairo_scale(cr, rect.size.width / width, rect.size.height / height);
    cairo_set_source_surface(cr, m_surface, 0, 0);
    cairo_pattern_t* pattern = cairo_get_source(cr);
    // Pad so that the edges stay sharp when the image is stretched.
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
    cairo_rectangle(cr, 0, 0, width, height);
    cairo_clip(cr);
    cairo_paint_with_alpha(cr, alpha);
    cairo_restore(cr);
}

std::optional<std::string> UIImage::writePNG(const std::string& path) const
{
    cairo_surface_flush(m_surface);
    cairo_status_t status = cairo_surface_write_to_png(m_surface, path.c_str());
    if (status != CAIRO_STATUS_SUCCESS)
        return std::string("cannot write ") + path + ": " + cairo_status_to_string(status);
    return std::nullopt;
}
