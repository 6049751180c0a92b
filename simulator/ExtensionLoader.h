#pragma once

#include <filesystem>
#include <string>

// Loads the extension into this process the way the tweak loader does: the
// library is opened, its load-time initialisers run and install their hooks.
// It stays loaded until the process ends, as on the phone.
class ExtensionLoader {
public:
    // Empty string on success, else the loader's complaint.
    static std::string load(const std::filesystem::path& library);
};
