#include "SettingsPane.h"

#include "DeviceRoot.h"

#include <Foundation/NSFileManager.h>

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>

namespace sim::live {

// Settings files are a few kilobytes; libplist recurses on deep nesting, so
// both the size and the depth are capped.
static constexpr std::streamsize largestFile = 256 * 1024;
static constexpr int deepest = 16;

using PlistPointer = std::unique_ptr<std::remove_pointer_t<plist_t>, decltype(&plist_free)>;

static PlistPointer readPlist(const std::string& devicePath, std::string& error)
{
    std::ifstream in(NSFileManager::hostPath(devicePath), std::ios::binary);
    if (!in) {
        error = devicePath + " is missing";
        return { nullptr, plist_free };
    }
    std::string bytes(static_cast<size_t>(largestFile) + 1, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(in.gcount()));
    plist_t root = nullptr;
    if (bytes.size() <= static_cast<size_t>(largestFile))
        plist_from_memory(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
    if (!root || plist_get_node_type(root) != PLIST_DICT) {
        error = devicePath + " is not a property list dictionary";
        if (root)
            plist_free(root);
        return { nullptr, plist_free };
    }
    return { root, plist_free };
}

static nlohmann::json toJson(plist_t node, int depth)
{
    if (depth > deepest)
        return nullptr;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        // libplist has no signed integers: negative numbers come back wrapped.
        return static_cast<int64_t>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        const char* text = plist_get_string_ptr(node, nullptr);
        return text ? std::string(text) : std::string();
    }
    case PLIST_ARRAY: {
        auto array = nlohmann::json::array();
        for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
            array.push_back(toJson(plist_array_get_item(node, i), depth + 1));
        return array;
    }
    case PLIST_DICT: {
        auto object = nlohmann::json::object();
        plist_dict_iter iterator = nullptr;
        plist_dict_new_iter(node, &iterator);
        for (;;) {
            char* key = nullptr;
            plist_t value = nullptr;
            plist_dict_next_item(node, iterator, &key, &value);
            if (!key)
                break;
            object[key] = toJson(value, depth + 1);
            std::free(key);
        }
        std::free(iterator);
        return object;
    }
    default:
        return nullptr;
    }
}

nlohmann::json SettingsPane::read()
{
    nlohmann::json pane { { "items", nlohmann::json::array() }, { "file", DeviceRoot::preferencesPath } };
    std::string error;
    PlistPointer specifiers = readPlist(DeviceRoot::settingsSpecifiersPath, error);
    if (!specifiers) {
        pane["error"] = "the settings pane is not installed: " + error;
        return pane;
    }
    nlohmann::json items = toJson(plist_dict_get_item(specifiers.get(), "items"), 0);
    if (!items.is_array()) {
        pane["error"] = std::string(DeviceRoot::settingsSpecifiersPath) + " has no items";
        return pane;
    }
    std::string ignored;
    PlistPointer preferences = readPlist(DeviceRoot::preferencesPath, ignored);
    nlohmann::json values = preferences ? toJson(preferences.get(), 0) : nlohmann::json::object();
    for (auto& item : items) {
        if (item.is_object() && item.contains("key") && item["key"].is_string() && values.contains(item["key"].get<std::string>()))
            item["value"] = values[item["key"].get<std::string>()];
    }
    pane["items"] = std::move(items);
    return pane;
}

}
