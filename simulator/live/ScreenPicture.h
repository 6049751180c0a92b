#pragma once

#include <string>

typedef struct _cairo_surface cairo_surface_t;

// A picture of the screen as PNG bytes for the live page, made for speed:
// the fastest deflate level and one cheap row filter (the picture is sent
// over the loopback, where size hardly matters), and three channels when
// every pixel is opaque, as the screen always is. Pixel for pixel the same
// as the `shot` command's file; the bytes differ.
class ScreenPicture {
public:
    // Empty when the surface is not an image or the encoder failed.
    static std::string png(cairo_surface_t*);
};
