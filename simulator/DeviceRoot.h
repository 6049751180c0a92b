#pragma once

#include <filesystem>
#include <string>

// The simulated device's file system: a folder under which the extension's
// absolute paths resolve. Either one the user names (kept) or a fresh
// temporary folder (removed when the session ends). The resource bundle is
// installed into it at its place on the phone.
class DeviceRoot {
public:
    static constexpr const char* bundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";

    DeviceRoot() = default;
    DeviceRoot(const DeviceRoot&) = delete;
    DeviceRoot& operator=(const DeviceRoot&) = delete;
    ~DeviceRoot();

    // Empty string on success, else what went wrong.
    std::string open(const std::filesystem::path& requested);
    std::string installBundle(const std::filesystem::path& builtBundle);

    const std::filesystem::path& path() const { return m_path; }
    // A device path ("/private/var/...") as a path on this machine.
    std::filesystem::path resolve(const std::string& devicePath) const;

private:
    std::filesystem::path m_path;
    bool m_temporary { false };
};
