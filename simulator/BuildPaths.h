#pragma once

#include <filesystem>

// Where the simulator finds what the build made beside it: the extension, the
// resource bundle, the settings pane and the host's artwork; and the live
// page's files, which are served from the source tree. Each can be overridden
// by an environment variable (KAVELIN_EXTENSION, KAVELIN_BUNDLE,
// KAVELIN_SETTINGS_PANE, KAVELIN_HOST_ART, KAVELIN_LIVE_PAGE).
struct BuildPaths {
    std::filesystem::path extension;
    std::filesystem::path resourceBundle;
    // A folder holding the pane's Kavelin.plist (entry) and Root.plist (specifiers).
    std::filesystem::path settingsPane;
    std::filesystem::path hostArt;
    std::filesystem::path livePage;

    static BuildPaths locate();
};
