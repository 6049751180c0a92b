#pragma once

#include <string>
#include <string_view>

namespace objc {

// A selector is an interned method name: two selectors with the same name are
// the same pointer, so comparing and hashing them is cheap.
struct Selector {
    std::string name;
};

using SEL = const Selector*;

SEL sel_registerName(std::string_view name);
inline const char* sel_getName(SEL sel) { return sel ? sel->name.c_str() : "<null selector>"; }

} // namespace objc

// `OBJC_SEL("layoutSubviews")` is the counterpart of @selector(layoutSubviews):
// the name is interned once per call site.
#define OBJC_SEL(name) ([]() -> ::objc::SEL { static ::objc::SEL s = ::objc::sel_registerName(name); return s; }())
