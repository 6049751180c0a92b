#include "UIImage.h"

#include <Foundation/NSFileManager.h>

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fcntl.h>
#include <map>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

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
    , m_pixelWidth(cairo_image_surface_get_width(surface))
    , m_pixelHeight(cairo_image_surface_get_height(surface))
    , m_scale(scale > 0 ? scale : 1)
    , m_name(std::move(name))
{
    m_size = { m_pixelWidth / m_scale, m_pixelHeight / m_scale };
}

UIImage::UIImage(int pixelWidth, int pixelHeight, double scale, std::string name, PixelMaker make)
    : m_makePixels(std::move(make))
    , m_pixelWidth(pixelWidth)
    , m_pixelHeight(pixelHeight)
    , m_scale(scale > 0 ? scale : 1)
    , m_name(std::move(name))
{
    m_size = { m_pixelWidth / m_scale, m_pixelHeight / m_scale };
}

UIImage::~UIImage()
{
    if (m_surface)
        cairo_surface_destroy(m_surface);
}

// "…/KavelinBundle.bundle/Battery/Battery60@2x.png" is the resource
// "Battery/Battery60"; a file outside a bundle is named by its base name.
static std::string resourceName(const std::string& path)
{
    std::string name = path;
    if (size_t bundle = name.rfind(".bundle/"); bundle != std::string::npos)
        name = name.substr(bundle + 8);
    else
        name = name.substr(name.rfind('/') + 1);
    if (size_t dot = name.rfind('.'); dot != std::string::npos && name.find('/', dot) == std::string::npos)
        name.resize(dot);
    for (const char* suffix : { "@2x", "@3x" }) {
        if (name.ends_with(suffix))
            name.resize(name.size() - 3);
    }
    return name;
}

// A path's folder (with its last slash), its file name's stem and its
// extension (with the dot), as std::filesystem splits them, without the
// cost of building paths: images are looked up by every table reload.
struct FileNameParts {
    std::string_view folder, stem, extension;
};

static FileNameParts splitFileName(std::string_view path)
{
    size_t slash = path.rfind('/');
    size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    std::string_view name = path.substr(start);
    size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || name == "..")
        dot = name.size();
    return { path.substr(0, start), name.substr(0, dot), name.substr(dot) };
}

static double scaleFromFileName(std::string_view path)
{
    std::string_view stem = splitFileName(path).stem;
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

// A file's bytes, read whole.
struct FileBytes {
    std::shared_ptr<unsigned char[]> data;
    size_t size { 0 };
};

// The pixel size from a PNG's header (the signature, then the IHDR chunk
// with the width and height as big-endian 32-bit numbers); nothing when the
// data does not start as a PNG or is larger than cairo can hold.
std::optional<std::pair<int, int>> pngPixelSize(const FileBytes& bytes)
{
    static constexpr std::array<unsigned char, 16> start { 0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n', 0, 0, 0, 13, 'I', 'H', 'D', 'R' };
    const unsigned char* data = bytes.data.get();
    if (bytes.size < 24 || !std::equal(start.begin(), start.end(), data))
        return std::nullopt;
    auto number = [&](size_t at) { return (uint32_t(data[at]) << 24) | (uint32_t(data[at + 1]) << 16) | (uint32_t(data[at + 2]) << 8) | data[at + 3]; };
    uint32_t width = number(16);
    uint32_t height = number(20);
    constexpr uint32_t largest = 32767;
    if (!width || !height || width > largest || height > largest)
        return std::nullopt;
    return std::pair { int(width), int(height) };
}

std::optional<FileBytes> readFile(const std::string& file, size_t size)
{
    int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    FileBytes bytes { std::make_unique_for_overwrite<unsigned char[]>(size), size };
    size_t done = 0;
    while (done < size) {
        ssize_t count = ::read(descriptor, bytes.data.get() + done, size - done);
        if (count <= 0)
            break;
        done += size_t(count);
    }
    ::close(descriptor);
    if (done != size)
        return std::nullopt;
    return bytes;
}

struct PNGReader {
    const FileBytes& bytes;
    size_t offset { 0 };
    static cairo_status_t read(void* closure, unsigned char* target, unsigned int length)
    {
        auto* reader = static_cast<PNGReader*>(closure);
        if (reader->bytes.size - reader->offset < length)
            return CAIRO_STATUS_READ_ERROR;
        std::copy_n(reader->bytes.data.get() + reader->offset, length, target);
        reader->offset += length;
        return CAIRO_STATUS_SUCCESS;
    }
};

// Decodes a PNG into an ARGB32 surface of the given size, transparent where
// the data turns out damaged.
cairo_surface_t* decodePNG(const FileBytes& data, int width, int height)
{
    {
        std::lock_guard lock(decodedFilesLock());
        ++decodedFileTotal();
    }
    cairo_surface_t* surface = createSurface(width, height);
    PNGReader reader { data };
    cairo_surface_t* loaded = cairo_image_surface_create_from_png_stream(&PNGReader::read, &reader);
    if (cairo_surface_status(loaded) == CAIRO_STATUS_SUCCESS) {
        // Opaque PNGs load as RGB24; keep every image in one format.
        cairo_t* cr = cairo_create(surface);
        cairo_set_source_surface(cr, loaded, 0, 0);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_paint(cr);
        cairo_destroy(cr);
    }
    cairo_surface_destroy(loaded);
    cairo_surface_flush(surface);
    return surface;
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
        if (scaleFromFileName(base) == 1) {
            auto [folder, stem, extension] = splitFileName(base);
            for (const char* suffix : { "@2x", "@3x" })
                candidates.push_back(std::string(folder).append(stem).append(suffix).append(extension));
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
        // The bytes are read now, so that the pixels are those of the
        // version the image was made from, whenever they are decoded.
        auto data = readFile(candidate, size_t(status.st_size));
        auto size = data ? pngPixelSize(*data) : std::nullopt;
        if (!size)
            return nullptr;
        int width = size->first, height = size->second;
        auto image = adoptRef(new UIImage(width, height, scaleFromFileName(candidate), name, [png = *data, width, height] { return decodePNG(png, width, height); }));
        image->m_fromFile = true;
        cacheDecodedFile(key, version, image);
        return image;
    }
    return nullptr;
}

cairo_surface_t* UIImage::cairoSurface() const
{
    std::call_once(m_made, [this] {
        if (!m_surface) {
            m_surface = m_makePixels();
            m_makePixels = nullptr;
            m_pixelsMade = true;
        }
    });
    return m_surface;
}

size_t UIImage::decodedFileCount()
{
    std::lock_guard lock(decodedFilesLock());
    return decodedFileTotal();
}

// The pixels of an image of `size` points drawn by code at `scale`.
static int pixelsFor(double points, double scale) { return std::max(1, int(std::ceil(points * scale - 1e-9))); }

static bool isDrawableSize(CGSize size, double scale)
{
    return size.width > 0 && size.height > 0 && scale > 0 && size.width * scale <= 16384 && size.height * scale <= 16384;
}

static cairo_surface_t* drawnSurface(CGSize size, double scale, const std::function<void(cairo_t*)>& draw)
{
    cairo_surface_t* surface = createSurface(pixelsFor(size.width, scale), pixelsFor(size.height, scale));
    cairo_t* cr = cairo_create(surface);
    cairo_scale(cr, scale, scale);
    if (draw)
        draw(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    return surface;
}

RefPtr<UIImage> UIImage::imageWithSize(CGSize size, double scale, const std::function<void(cairo_t*)>& draw, std::string name)
{
    if (!isDrawableSize(size, scale))
        return nullptr;
    auto image = make<UIImage>(drawnSurface(size, scale, draw), scale, std::move(name));
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

RefPtr<UIImage> UIImage::derived(int pixelWidth, int pixelHeight, double scale, PixelMaker makePixels) const
{
    bool waits = m_fromFile && !m_pixelsMade;
    auto image = waits ? adoptRef(new UIImage(pixelWidth, pixelHeight, scale, m_name, std::move(makePixels))) : make<UIImage>(makePixels(), scale, m_name);
    image->m_size = m_size;
    image->m_tintColor = m_tintColor;
    image->m_renderingMode = m_renderingMode;
    return image;
}

RefPtr<UIImage> UIImage::imageWithRenderingMode(UIImageRenderingMode mode) const
{
    RefPtr<UIImage> source(const_cast<UIImage*>(this));
    auto image = derived(pixelWidth(), pixelHeight(), m_scale, [source] {
        cairo_surface_t* surface = createSurface(source->pixelWidth(), source->pixelHeight());
        cairo_t* cr = cairo_create(surface);
        cairo_set_source_surface(cr, source->cairoSurface(), 0, 0);
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_paint(cr);
        cairo_destroy(cr);
        return surface;
    });
    image->m_renderingMode = mode;
    return image;
}

RefPtr<UIImage> UIImage::scaledToSize(CGSize size) const
{
    if (!(size.width > 0 && size.height > 0) || !std::isfinite(size.width) || !std::isfinite(size.height))
        return nullptr;
    double density = std::max(pixelWidth() / size.width, pixelHeight() / size.height);
    double scale = std::clamp(std::ceil(density - 1e-6), 1.0, 3.0);
    if (!isDrawableSize(size, scale))
        return nullptr;
    RefPtr<UIImage> source(const_cast<UIImage*>(this));
    auto image = derived(pixelsFor(size.width, scale), pixelsFor(size.height, scale), scale, [source, size, scale] {
        return drawnSurface(size, scale, [&](cairo_t* cr) { source->drawInRect(cr, CGRectMake(0, 0, size.width, size.height)); });
    });
    // Exactly the size asked for, as imageWithSize.
    image->m_size = size;
    return image;
}

RefPtr<UIImage> UIImage::tintedWithColor(const UIColor* color) const
{
    RefPtr<UIImage> source(const_cast<UIImage*>(this));
    if (!color)
        return derived(pixelWidth(), pixelHeight(), m_scale, [source] { return cairo_surface_reference(source->cairoSurface()); });
    double red = color->red(), green = color->green(), blue = color->blue(), alpha = color->alpha();
    auto image = derived(pixelWidth(), pixelHeight(), m_scale, [source, red, green, blue, alpha] {
        cairo_surface_t* surface = createSurface(source->pixelWidth(), source->pixelHeight());
        cairo_t* cr = cairo_create(surface);
        cairo_set_source_rgba(cr, red, green, blue, alpha);
        cairo_mask_surface(cr, source->cairoSurface(), 0, 0);
        cairo_destroy(cr);
        return surface;
    });
    image->m_tintColor = make<UIColor>(red, green, blue, alpha);
    return image;
}

UIImage::Pixel UIImage::pixelAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= pixelWidth() || y >= pixelHeight())
        return {};
    cairo_surface_t* surface = cairoSurface();
    cairo_surface_flush(surface);
    const unsigned char* row = cairo_image_surface_get_data(surface) + static_cast<size_t>(y) * cairo_image_surface_get_stride(surface);
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
    cairo_rectangle(cr, 0, 0, width, height);
    cairo_clip(cr);
    auto draw = [&] {
        cairo_set_source_surface(cr, cairoSurface(), 0, 0);
        cairo_pattern_t* pattern = cairo_get_source(cr);
        // Pad so that the edges stay sharp when the image is stretched.
        cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
        cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
        cairo_paint_with_alpha(cr, alpha);
    };
    if (long(pixelWidth()) * pixelHeight() >= ImageDrawingCache::smallestPixelCount) {
        if (!m_drawingCache)
            m_drawingCache = std::make_unique<ImageDrawingCache>();
        m_drawingCache->drawImage(cr, cairoSurface(), alpha, draw);
    } else {
        draw();
    }
    cairo_restore(cr);
}

std::optional<std::string> UIImage::writePNG(const std::string& path) const
{
    cairo_surface_flush(cairoSurface());
    cairo_status_t status = cairo_surface_write_to_png(cairoSurface(), path.c_str());
    if (status != CAIRO_STATUS_SUCCESS)
        return std::string("cannot write ") + path + ": " + cairo_status_to_string(status);
    return std::nullopt;
}
