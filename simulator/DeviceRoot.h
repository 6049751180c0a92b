#pragma once

#include <filesystem>
#include <string>

// The simulated device's file system: a folder under which the extension's
// absolute paths resolve. Either one the user names (kept) or a fresh
// temporary folder (removed when the session ends). The resource bundle and
// the settings pane are installed into it at their places on the phone.
class DeviceRoot {
public:
    static constexpr const char* bundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";
    // Where a tweak's package puts its settings pane: PreferenceLoader's entry
    // and the pane bundle's specifier list.
    static constexpr const char* settingsEntryPath = "/Library/PreferenceLoader/Preferences/Kavelin.plist";
    static constexpr const char* settingsSpecifiersPath = "/Library/PreferenceBundles/KavelinPrefs.bundle/Root.plist";
    // The preferences file the Settings app writes and the extension reads.
    static constexpr const char* preferencesPath = "/private/var/mobile/Library/Preferences/com.Corvane.Kavelin.plist";

    DeviceRoot() = default;
    DeviceRoot(const DeviceRoot&) = delete;
    DeviceRoot& operator=(const DeviceRoot&) = delete;
    ~DeviceRoot();

    // Empty string on success, else what went wrong.
    std::string open(const std::filesystem::path& requested);
    std::string installBundle(const std::filesystem::path& builtBundle);
    // Copies Kavelin.plist and Root.plist from the built pane folder (always,
    // so that a kept root gets the pane of this build).
    std::string installSettingsPane(const std::filesystem::path& builtPane);

    const std::filesystem::path& path() const { return m_path; }
    // A device path ("/private/var/...") as a path on this machine.
    std::filesystem::path resolve(const std::string& devicePath) const;

private:
    std::filesystem::path m_path;
    bool m_temporary { false };
};
