#include "DeviceModel.h"

#include <algorithm>
#include <charconv>

const std::vector<DeviceModel>& DeviceModel::all()
{
    static const auto* models = new std::vector<DeviceModel> {
        { "iphone4s", 4, { 320, 480 }, 2, 1, "iPhone" },
        { "iphone5", 5, { 320, 568 }, 2, 2, "iPhone" },
        { "iphone5c", 6, { 320, 568 }, 2, 2, "iPhone" },
        { "iphone5s", 7, { 320, 568 }, 2, 2, "iPhone" },
        { "iphone6", 8, { 375, 667 }, 2, 3, "iPhone" },
        { "iphone6plus", 9, { 414, 736 }, 3, 4, "iPhone" },
        { "iphone6s", 10, { 375, 667 }, 2, 3, "iPhone" },
        { "iphone6splus", 11, { 414, 736 }, 3, 4, "iPhone" },
        { "ipad2", 14, { 768, 1024 }, 1, 5, "iPad" },
        { "ipadmini", 15, { 768, 1024 }, 1, 5, "iPad" },
        { "ipad3", 16, { 768, 1024 }, 2, 5, "iPad" },
        { "ipad4", 17, { 768, 1024 }, 2, 5, "iPad" },
        { "ipadair", 18, { 768, 1024 }, 2, 5, "iPad" },
        { "ipadmini2", 19, { 768, 1024 }, 2, 5, "iPad" },
        { "ipadair2", 20, { 768, 1024 }, 2, 5, "iPad" },
        { "ipadmini3", 21, { 768, 1024 }, 2, 5, "iPad" },
        { "ipadmini4", 22, { 768, 1024 }, 2, 5, "iPad" },
        { "ipod5", 29, { 320, 568 }, 2, 2, "iPod touch" },
        { "ipod6", 30, { 320, 568 }, 2, 2, "iPod touch" },
    };
    return *models;
}

const DeviceModel& DeviceModel::iPhone6() { return all()[4]; }

std::optional<DeviceModel> DeviceModel::named(std::string_view name)
{
    if (name.starts_with("code=")) {
        std::string_view digits = name.substr(5);
        int code = 0;
        auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
        if (digits.empty() || error != std::errc() || end != digits.data() + digits.size())
            return std::nullopt;
        DeviceModel model = iPhone6();
        model.name = std::string(name);
        model.modelCode = code;
        return model;
    }
    auto& models = all();
    auto it = std::find_if(models.begin(), models.end(), [&](const DeviceModel& model) { return model.name == name; });
    if (it == models.end())
        return std::nullopt;
    return *it;
}
