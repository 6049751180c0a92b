#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sim::live {

// The live page's static files, served as they are from their folder (no
// build step): `/` is index.html; other paths name files in the folder or
// its subfolders. Names starting with a dot, `..` and anything that leads
// outside the folder are never found. Files are read on each request, so
// an edited page shows on reload.
class PageFiles {
public:
    struct File {
        std::string bytes;
        std::string contentType;
    };
    static constexpr size_t largestFile = 8 << 20;

    explicit PageFiles(std::filesystem::path folder);

    std::optional<File> find(std::string_view urlPath) const;
    const std::filesystem::path& folder() const { return m_folder; }

    // A page of last resort, when the folder holds no index.html: the
    // screen, refreshed on every change, and a line to play.
    static File placeholder();

private:
    std::filesystem::path m_folder;
};

}
