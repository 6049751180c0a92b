#pragma once

// Private to UIKit: the fonts and Pango contexts that every piece of text is
// measured and drawn with.

#include <pango/pangocairo.h>

#include <string>

class UIFont;

// The process-wide text set-up. Fonts come from a private fontconfig
// configuration that holds only the faces Apple's names are mapped to (and a
// fallback for glyphs those lack), so what is installed elsewhere on the
// machine cannot change a measurement. Glyph positions are not rounded and
// metrics are not hinted: a text has the same width at every scale, and the
// same input always gives the same pixels.
class TextEngine {
public:
    static TextEngine& shared();

    // Lays out text for measuring (identity transform).
    PangoContext* measuringContext() const { return m_measuringContext; }
    // Lays out text for drawing into `cr`: the context follows the cairo
    // transform and draws inline images.
    PangoContext* drawingContext(cairo_t* cr);

    // A description of the font at `scale` times its size, in absolute
    // points (never the 96-dpi "points" Pango assumes by default). The caller
    // frees it.
    PangoFontDescription* createDescription(const UIFont&, double scale = 1) const;

    std::string resolvedFaceName(const UIFont&) const;
    // Ascent and descent in points, both positive.
    void metrics(const UIFont&, double& ascent, double& descent) const;

    // The family name Pango is asked for.
    static constexpr const char* familyName = "Inter";

private:
    TextEngine();
    void configureContext(PangoContext*) const;

    PangoFontMap* m_fontMap { nullptr };
    PangoContext* m_measuringContext { nullptr };
    PangoContext* m_drawingContext { nullptr };
};
