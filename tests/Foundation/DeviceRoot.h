#pragma once

#include <Foundation/NSFileManager.h>
#include <Foundation/NSString.h>

#include <filesystem>
#include <random>
#include <string>

// A fresh device root in a temporary folder for one test, removed after it.
class TemporaryDeviceRoot {
public:
    TemporaryDeviceRoot()
    {
        std::random_device random;
        m_folder = std::filesystem::temp_directory_path() / ("kv-device-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(m_folder);
        NSFileManager::setDeviceRoot(m_folder.string());
    }
    ~TemporaryDeviceRoot()
    {
        NSFileManager::setDeviceRoot("");
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    const std::filesystem::path& folder() const { return m_folder; }

    void write(const std::string& devicePath, const std::string& bytes) const
    {
        auto data = NSData::dataWithBytes(bytes.data(), bytes.size());
        NSFileManager::defaultManager()->createFileAtPath(devicePath, data.get());
    }

private:
    std::filesystem::path m_folder;
};
