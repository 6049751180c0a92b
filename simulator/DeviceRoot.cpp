#include "DeviceRoot.h"

#include <cstdlib>
#include <system_error>
#include <unistd.h>

DeviceRoot::~DeviceRoot()
{
    if (m_temporary && !m_path.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
}

std::string DeviceRoot::open(const std::filesystem::path& requested)
{
    std::error_code error;
    if (!requested.empty()) {
        std::filesystem::create_directories(requested, error);
        if (error)
            return "cannot create the device root " + requested.string() + ": " + error.message();
        m_path = std::filesystem::absolute(requested);
        return {};
    }
    auto pattern = (std::filesystem::temp_directory_path(error) / "kavelin-root-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        return "cannot create a temporary device root";
    m_path = pattern;
    m_temporary = true;
    return {};
}

std::string DeviceRoot::installBundle(const std::filesystem::path& builtBundle)
{
    auto target = resolve(bundlePath);
    std::error_code error;
    if (std::filesystem::exists(target, error))
        return {};
    if (!std::filesystem::is_directory(builtBundle, error))
        return "the resource bundle was not found at " + builtBundle.string() + " (build the KavelinBundle target)";
    std::filesystem::create_directories(target.parent_path(), error);
    std::filesystem::copy(builtBundle, target, std::filesystem::copy_options::recursive, error);
    if (error)
        return "cannot install the resource bundle: " + error.message();
    return {};
}

std::string DeviceRoot::installSettingsPane(const std::filesystem::path& builtPane)
{
    const std::pair<const char*, const char*> files[] = { { "Kavelin.plist", settingsEntryPath }, { "Root.plist", settingsSpecifiersPath } };
    for (auto [name, devicePath] : files) {
        auto source = builtPane / name;
        auto target = resolve(devicePath);
        std::error_code error;
        if (!std::filesystem::is_regular_file(source, error))
            return "the settings pane was not found at " + source.string() + " (build the KavelinPrefs target)";
        std::filesystem::create_directories(target.parent_path(), error);
        std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing, error);
        if (error)
            return "cannot install the settings pane: " + error.message();
    }
    return {};
}

std::filesystem::path DeviceRoot::resolve(const std::string& devicePath) const
{
    std::string relative = devicePath;
    while (!relative.empty() && relative.front() == '/')
        relative.erase(relative.begin());
    return m_path / relative;
}
