#pragma once

#include "UIImage.h"

#include <CoreGraphics/CGGeometry.h>

#include <vector>

class UIView;
struct RenderContext;

// Turns view trees into pictures, the way the phone's compositor shows them:
// each view's background (with its corner radius), its own content, its
// subviews and its border, with its alpha and clipping. The output depends
// only on the views: the same trees give byte-identical pictures.
class UIRenderer {
public:
    // The windows, back to front, over a black screen of `screenSize`
    // points at `scale` pixels per point. Windows are placed by their frame.
    static RefPtr<UIImage> renderWindows(const std::vector<UIView*>& windows, CGSize screenSize, double scale);
    // One view and its subviews over transparency, with the view's top-left
    // corner at the image's.
    static RefPtr<UIImage> renderView(const UIView&, double scale);

    // Draws a view and its subviews into a context whose units are the
    // superview's coordinates.
    static void drawView(const UIView&, RenderContext&);
};
