#pragma once

#include <UIKit/UIColor.h>
#include <objc/objc.h>

#include <string>

// The maker library's colours from the strings the settings pane stores.
class CVColorFactory final : public NSObject {
    OBJC_CLASS(CVColorFactory)
public:
    // "#rrggbb" (hexadecimal digits in either case, blanks around allowed)
    // gives that opaque colour. Anything else gives opaque white, the default
    // of every colour setting, so a damaged value looks like the default
    // rather than making text vanish.
    static RefPtr<UIColor> colorFromHexString(const std::string& text);
};
