#include "BuildPaths.h"

#include <cstdlib>
#include <system_error>

static std::filesystem::path fromEnvironment(const char* name, const std::filesystem::path& fallback)
{
    const char* value = std::getenv(name);
    return value && *value ? std::filesystem::path(value) : fallback;
}

BuildPaths BuildPaths::locate()
{
    std::error_code error;
    auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    // The build puts programs in bin/ and libraries in lib/ side by side.
    auto buildDirectory = error ? std::filesystem::current_path() : executable.parent_path().parent_path();
    BuildPaths paths;
    paths.extension = fromEnvironment("KAVELIN_EXTENSION", buildDirectory / "lib" / "libKavelin.so");
    paths.resourceBundle = fromEnvironment("KAVELIN_BUNDLE", buildDirectory / "KavelinBundle.bundle");
    paths.settingsPane = fromEnvironment("KAVELIN_SETTINGS_PANE", buildDirectory / "SettingsPane");
    paths.hostArt = fromEnvironment("KAVELIN_HOST_ART", buildDirectory / "host-art");
    // The page needs no build step: a copy beside the build, if one was made, else the sources.
    auto installedPage = buildDirectory / "live-page";
    paths.livePage = fromEnvironment("KAVELIN_LIVE_PAGE", std::filesystem::is_directory(installedPage, error) ? installedPage : std::filesystem::path(KV_LIVE_PAGE_SOURCE));
    return paths;
}
