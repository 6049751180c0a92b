#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace sim {

enum class DeviceModel : uint8_t {
    iPhone4s,
    iPhone5,
    iPhone5c,
    iPhone5s,
    iPhone6,
    iPhone6Plus,
    iPhone6s,
    iPhone6sPlus,
    iPad2,
    iPadMini,
    iPad3,
    iPad4,
    iPadAir,
    iPadMini2,
    iPadAir2,
    iPadMini3,
    iPadMini4,
    iPod5,
    iPod6,
};

// What the host needs to know about a device: its model code (the battery
// estimator's device table), its screen in points and scale, and its
// screen-size class (1 for 3.5-inch, 2 for 4-inch, 3 for 4.7-inch, 4 for
// 5.5-inch, 5 for iPads).
struct DeviceInfo {
    DeviceModel model;
    std::string_view name; // as a scenario writes it: "iphone6plus"
    int code;
    int width;
    int height;
    int scale;
    int sizeClass;
};

std::span<const DeviceInfo> deviceTable();
const DeviceInfo& deviceInfo(DeviceModel);
std::optional<DeviceModel> deviceModelNamed(std::string_view);

}
