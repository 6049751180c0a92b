#include "TextEngine.h"

#include "UIFont.h"
#include "UIImage.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

// The files of the installed faces of `family` (upright and italic, every
// weight), found through the machine's own fontconfig set-up, in a stable
// order.
static std::vector<std::string> installedFontFiles(FcConfig* system, const char* family, const char* style = nullptr)
{
    std::vector<std::string> files;
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    if (style)
        FcPatternAddString(pattern, FC_STYLE, reinterpret_cast<const FcChar8*>(style));
    FcObjectSet* objects = FcObjectSetBuild(FC_FILE, nullptr);
    if (FcFontSet* set = FcFontList(system, pattern, objects)) {
        for (int i = 0; i < set->nfont; ++i) {
            FcChar8* file = nullptr;
            if (FcPatternGetString(set->fonts[i], FC_FILE, 0, &file) == FcResultMatch)
                files.emplace_back(reinterpret_cast<const char*>(file));
        }
        FcFontSetDestroy(set);
    }
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    std::sort(files.begin(), files.end());
    return files;
}

static FcConfig* createPinnedConfig()
{
    FcConfig* system = FcInitLoadConfigAndFonts();
    std::vector<std::string> files = installedFontFiles(system, TextEngine::familyName);
    if (files.empty()) {
        std::fprintf(stderr, "UIKit: the font family \"%s\" (fonts-inter) is not installed; text uses the system's fonts and will not match the reference pictures\n",
            TextEngine::familyName);
        return system;
    }
    // A face with wide coverage for the odd glyph Inter lacks.
    for (auto& file : installedFontFiles(system, "DejaVu Sans", "Book"))
        files.push_back(file);
    FcConfigDestroy(system);

    FcConfig* pinned = FcConfigCreate();
    for (auto& file : files)
        FcConfigAppFontAddFile(pinned, reinterpret_cast<const FcChar8*>(file.c_str()));
    return pinned;
}

// Draws an inline image (a text attachment) where Pango placed its shape:
// the current point is on the baseline at the shape's left edge.
static void renderShape(cairo_t* cr, PangoAttrShape* shape, gboolean doPath, gpointer)
{
    auto* image = static_cast<UIImage*>(shape->data);
    if (doPath || !image)
        return;
    double x = 0;
    double y = 0;
    cairo_get_current_point(cr, &x, &y);
    const PangoRectangle& r = shape->logical_rect;
    image->drawInRect(cr,
        CGRectMake(x + double(r.x) / PANGO_SCALE, y + double(r.y) / PANGO_SCALE, double(r.width) / PANGO_SCALE, double(r.height) / PANGO_SCALE));
}

TextEngine& TextEngine::shared()
{
    static auto* engine = new TextEngine();
    return *engine;
}

TextEngine::TextEngine()
{
    FcConfig* config = createPinnedConfig();
    m_fontMap = pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT);
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(m_fontMap), config);
    FcConfigDestroy(config);
    m_measuringContext = pango_font_map_create_context(m_fontMap);
    configureContext(m_measuringContext);
    m_drawingContext = pango_font_map_create_context(m_fontMap);
    configureContext(m_drawingContext);
    pango_cairo_context_set_shape_renderer(m_drawingContext, renderShape, nullptr, nullptr);
}

void TextEngine::configureContext(PangoContext* context) const
{
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
    pango_context_set_language(context, pango_language_from_string("en-us"));
    pango_context_set_base_dir(context, PANGO_DIRECTION_LTR);
}

PangoContext* TextEngine::drawingContext(cairo_t* cr)
{
    pango_cairo_update_context(cr, m_drawingContext);
    return m_drawingContext;
}

PangoFontDescription* TextEngine::createDescription(const UIFont& font, double scale) const
{
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family_static(description, familyName);
    pango_font_description_set_weight(description, static_cast<PangoWeight>(font.weight()));
    pango_font_description_set_style(description, font.isItalic() ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    // Sizes beyond any screen are cut down rather than overflow Pango's units.
    double size = std::clamp(font.pointSize() * scale, 0.0, 4096.0);
    pango_font_description_set_absolute_size(description, (std::isfinite(size) ? size : 0) * PANGO_SCALE);
    return description;
}

std::string TextEngine::resolvedFaceName(const UIFont& font) const
{
    PangoFontDescription* description = createDescription(font);
    PangoFont* loaded = pango_font_map_load_font(m_fontMap, m_measuringContext, description);
    pango_font_description_free(description);
    if (!loaded)
        return {};
    std::string name;
    if (PANGO_IS_FC_FONT(loaded)) {
        FcChar8* fullName = nullptr;
        if (FcPatternGetString(pango_fc_font_get_pattern(PANGO_FC_FONT(loaded)), FC_FULLNAME, 0, &fullName) == FcResultMatch)
            name = reinterpret_cast<const char*>(fullName);
    }
    g_object_unref(loaded);
    return name;
}

void TextEngine::metrics(const UIFont& font, double& ascent, double& descent) const
{
    PangoFontDescription* description = createDescription(font);
    PangoFontMetrics* metrics = pango_context_get_metrics(m_measuringContext, description, nullptr);
    ascent = double(pango_font_metrics_get_ascent(metrics)) / PANGO_SCALE;
    descent = double(pango_font_metrics_get_descent(metrics)) / PANGO_SCALE;
    pango_font_metrics_unref(metrics);
    pango_font_description_free(description);
}
