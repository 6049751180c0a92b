#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The user's chosen apps: a text file written by the settings pane, one
// bundle identifier a line, optionally followed by ":" and text that is
// ignored. The launcher reads it on every rebuild, on the main thread, so
// the reading is bounded: only the first maximumFileLength bytes are read,
// and the launcher stops looking identifiers up once its row is full.
class KVAppList {
public:
    static constexpr const char* path = "/private/var/mobile/Library/Preferences/com.corvane.kavelin.applist.activeapps";
    static constexpr size_t maximumFileLength = 1024 * 1024;

    // The first maximumFileLength bytes of the file at `devicePath`; when
    // the file is longer, a last line whose identifier the cut may have split
    // is left out (one whose identifier ended within the limit stays).
    // nullopt when there is no such file.
    static std::optional<std::string> textFromFile(const std::string& devicePath = path);

    // Calls `visit` with each identifier of a list's text, in order, repeats
    // included, until it answers false. Lines end at "\n" (a "\r" before it
    // is dropped, so Windows line ends work); blank lines and lines that are
    // not UTF-8 are skipped; blanks around an identifier and a leading
    // byte-order mark are dropped.
    static void forEachBundleIdentifier(std::string_view text, const std::function<bool(std::string_view)>& visit);

    // Every identifier, for callers that want them all.
    static std::vector<std::string> bundleIdentifiersFromText(std::string_view text);
    static std::optional<std::vector<std::string>> bundleIdentifiersFromFile(const std::string& devicePath = path);
};
