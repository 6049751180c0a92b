#pragma once

#include <algorithm>
#include <cmath>

// Points, sizes and rectangles in points, as CoreGraphics has them.
using CGFloat = double;

struct CGPoint {
    CGFloat x { 0 };
    CGFloat y { 0 };
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    CGFloat width { 0 };
    CGFloat height { 0 };
    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};

inline CGPoint CGPointMake(CGFloat x, CGFloat y) { return { x, y }; }
inline CGSize CGSizeMake(CGFloat w, CGFloat h) { return { w, h }; }
inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat w, CGFloat h) { return { { x, y }, { w, h } }; }
inline const CGRect CGRectZero {};

inline CGFloat CGRectGetMinX(const CGRect& r) { return r.origin.x; }
inline CGFloat CGRectGetMinY(const CGRect& r) { return r.origin.y; }
inline CGFloat CGRectGetMaxX(const CGRect& r) { return r.origin.x + r.size.width; }
inline CGFloat CGRectGetMaxY(const CGRect& r) { return r.origin.y + r.size.height; }
inline CGFloat CGRectGetMidX(const CGRect& r) { return r.origin.x + r.size.width / 2; }
inline CGFloat CGRectGetMidY(const CGRect& r) { return r.origin.y + r.size.height / 2; }
inline CGFloat CGRectGetWidth(const CGRect& r) { return r.size.width; }
inline CGFloat CGRectGetHeight(const CGRect& r) { return r.size.height; }

inline bool CGRectContainsPoint(const CGRect& r, CGPoint p)
{
    return p.x >= r.origin.x && p.y >= r.origin.y && p.x < CGRectGetMaxX(r) && p.y < CGRectGetMaxY(r);
}

inline bool CGRectIntersectsRect(const CGRect& a, const CGRect& b)
{
    return CGRectGetMinX(a) < CGRectGetMaxX(b) && CGRectGetMinX(b) < CGRectGetMaxX(a) && CGRectGetMinY(a) < CGRectGetMaxY(b)
        && CGRectGetMinY(b) < CGRectGetMaxY(a);
}

inline CGRect CGRectIntersection(const CGRect& a, const CGRect& b)
{
    CGFloat x0 = std::max(CGRectGetMinX(a), CGRectGetMinX(b));
    CGFloat y0 = std::max(CGRectGetMinY(a), CGRectGetMinY(b));
    CGFloat x1 = std::min(CGRectGetMaxX(a), CGRectGetMaxX(b));
    CGFloat y1 = std::min(CGRectGetMaxY(a), CGRectGetMaxY(b));
    if (x1 <= x0 || y1 <= y0)
        return CGRectZero;
    return CGRectMake(x0, y0, x1 - x0, y1 - y0);
}

inline CGRect CGRectOffset(const CGRect& r, CGFloat dx, CGFloat dy) { return CGRectMake(r.origin.x + dx, r.origin.y + dy, r.size.width, r.size.height); }
inline CGRect CGRectInset(const CGRect& r, CGFloat dx, CGFloat dy)
{
    return CGRectMake(r.origin.x + dx, r.origin.y + dy, r.size.width - 2 * dx, r.size.height - 2 * dy);
}

// Affine transforms, enough for scaling and translating views.
struct CGAffineTransform {
    CGFloat a { 1 }, b { 0 }, c { 0 }, d { 1 }, tx { 0 }, ty { 0 };
    friend bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};
inline const CGAffineTransform CGAffineTransformIdentity {};
inline CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy) { return { sx, 0, 0, sy, 0, 0 }; }
inline CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty) { return { 1, 0, 0, 1, tx, ty }; }
inline bool CGAffineTransformIsIdentity(const CGAffineTransform& t) { return t == CGAffineTransformIdentity; }
