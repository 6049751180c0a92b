#pragma once

#include <filesystem>

// Where the simulator finds what the build made beside it: the extension, the
// resource bundle and the host's artwork. Each can be overridden by an
// environment variable (KAVELIN_EXTENSION, KAVELIN_BUNDLE, KAVELIN_HOST_ART).
struct BuildPaths {
    std::filesystem::path extension;
    std::filesystem::path resourceBundle;
    std::filesystem::path hostArt;

    static BuildPaths locate();
};
