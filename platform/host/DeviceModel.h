#pragma once

#include <CoreGraphics/CGGeometry.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A device the host can play: its name in scenarios, the model code of the
// battery estimator's device table, the portrait screen in points, the
// scale, the screen-size class (1 for 3.5-inch, 2 for 4-inch, 3 for
// 4.7-inch, 4 for 5.5-inch, 5 for iPads) and UIKit's model name.
struct DeviceModel {
    std::string name;
    int modelCode { 8 };
    CGSize screenSize { 375, 667 };
    double scale { 2 };
    int screenSizeClass { 3 };
    std::string model { "iPhone" };

    static const std::vector<DeviceModel>& all();
    static const DeviceModel& iPhone6();
    // "iphone6", or "code=N" for a bare model code (with the iPhone 6's
    // screen); nothing for anything else.
    static std::optional<DeviceModel> named(std::string_view);
};
