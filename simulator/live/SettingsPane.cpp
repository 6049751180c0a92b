#include "SettingsPane.h"

#include "DeviceRoot.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSData.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSPropertyListSerialization.h>
#include <Foundation/NSString.h>

namespace sim::live {

// Read by the Foundation layer's reader, which bounds the size and the
// nesting of what it takes (the preferences file is anyone's to write).
static RefPtr<NSDictionary> readPlist(const std::string& devicePath, std::string& error)
{
    auto data = NSData::dataWithContentsOfFile(devicePath);
    if (!data) {
        error = devicePath + " is missing";
        return nullptr;
    }
    auto root = objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data.get()));
    if (!root)
        error = devicePath + " is not a property list dictionary";
    return root;
}

// Dates and data, which no cell shows, become null.
static nlohmann::json toJson(const NSObject* node)
{
    if (auto* number = dynamic_cast<const NSNumber*>(node)) {
        if (number->kind() == NSNumber::Kind::Bool)
            return number->boolValue();
        if (number->kind() == NSNumber::Kind::Real)
            return number->doubleValue();
        return static_cast<int64_t>(number->longLongValue());
    }
    if (auto* text = dynamic_cast<const NSString*>(node))
        return text->string();
    if (auto* array = dynamic_cast<const NSArray*>(node)) {
        auto json = nlohmann::json::array();
        for (const StrongId& item : array->objects())
            json.push_back(toJson(item.get()));
        return json;
    }
    if (auto* dictionary = dynamic_cast<const NSDictionary*>(node)) {
        auto json = nlohmann::json::object();
        for (const auto& [key, value] : dictionary->entries())
            json[key] = toJson(value.get());
        return json;
    }
    return nullptr;
}

nlohmann::json SettingsPane::read()
{
    nlohmann::json pane { { "items", nlohmann::json::array() }, { "file", DeviceRoot::preferencesPath } };
    std::string error;
    RefPtr<NSDictionary> specifiers = readPlist(DeviceRoot::settingsSpecifiersPath, error);
    if (!specifiers) {
        pane["error"] = "the settings pane is not installed: " + error;
        return pane;
    }
    nlohmann::json items = toJson(specifiers->objectForKey("items").get());
    if (!items.is_array()) {
        pane["error"] = std::string(DeviceRoot::settingsSpecifiersPath) + " has no items";
        return pane;
    }
    std::string ignored;
    RefPtr<NSDictionary> preferences = readPlist(DeviceRoot::preferencesPath, ignored);
    nlohmann::json values = preferences ? toJson(preferences.get()) : nlohmann::json::object();
    for (auto& item : items) {
        if (item.is_object() && item.contains("key") && item["key"].is_string() && values.contains(item["key"].get<std::string>()))
            item["value"] = values[item["key"].get<std::string>()];
    }
    pane["items"] = std::move(items);
    return pane;
}

}
