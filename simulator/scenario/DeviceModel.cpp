#include "DeviceModel.h"

#include <array>
#include <cassert>

namespace sim {

namespace {

constexpr std::array devices {
    DeviceInfo { DeviceModel::iPhone4s, "iphone4s", 4, 320, 480, 2, 1 },
    DeviceInfo { DeviceModel::iPhone5, "iphone5", 5, 320, 568, 2, 2 },
    DeviceInfo { DeviceModel::iPhone5c, "iphone5c", 6, 320, 568, 2, 2 },
    DeviceInfo { DeviceModel::iPhone5s, "iphone5s", 7, 320, 568, 2, 2 },
    DeviceInfo { DeviceModel::iPhone6, "iphone6", 8, 375, 667, 2, 3 },
    DeviceInfo { DeviceModel::iPhone6Plus, "iphone6plus", 9, 414, 736, 3, 4 },
    DeviceInfo { DeviceModel::iPhone6s, "iphone6s", 10, 375, 667, 2, 3 },
    DeviceInfo { DeviceModel::iPhone6sPlus, "iphone6splus", 11, 414, 736, 3, 4 },
    DeviceInfo { DeviceModel::iPad2, "ipad2", 14, 768, 1024, 1, 5 },
    DeviceInfo { DeviceModel::iPadMini, "ipadmini", 15, 768, 1024, 1, 5 },
    DeviceInfo { DeviceModel::iPad3, "ipad3", 16, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPad4, "ipad4", 17, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPadAir, "ipadair", 18, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPadMini2, "ipadmini2", 19, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPadAir2, "ipadair2", 20, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPadMini3, "ipadmini3", 21, 768, 1024, 2, 5 },
    DeviceInfo { DeviceModel::iPadMini4, "ipadmini4", 22, 768, 1024, 2, 5 },
    // The fifth- and sixth-generation iPods have the 4-inch screen.
    DeviceInfo { DeviceModel::iPod5, "ipod5", 29, 320, 568, 2, 2 },
    DeviceInfo { DeviceModel::iPod6, "ipod6", 30, 320, 568, 2, 2 },
};

}

std::span<const DeviceInfo> deviceTable() { return devices; }

const DeviceInfo& deviceInfo(DeviceModel model)
{
    const DeviceInfo& info = devices[static_cast<size_t>(model)];
    assert(info.model == model);
    return info;
}

std::optional<DeviceModel> deviceModelNamed(std::string_view name)
{
    for (const DeviceInfo& info : devices) {
        if (info.name == name)
            return info.model;
    }
    return std::nullopt;
}

}
