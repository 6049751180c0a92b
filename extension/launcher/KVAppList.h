#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The user's chosen apps: a text file written by the settings pane, one
// bundle identifier a line, optionally followed by ":" and text that is
// ignored. The launcher reads it on every rebuild, on the main thread, so
// the reading is bounded: only the first maximumFileLength bytes are read
// and at most maximumEntries identifiers are taken, which keeps a rebuild
// from a file of any size well within a frame.
class KVAppList {
public:
    static constexpr const char* path = "/private/var/mobile/Library/Preferences/com.corvane.kavelin.applist.activeapps";
    static constexpr size_t maximumFileLength = 64 * 1024;
    static constexpr size_t maximumEntries = 256;

    // The identifiers of the file at `devicePath`, in file order; nullopt
    // when there is no such file.
    static std::optional<std::vector<std::string>> bundleIdentifiersFromFile(const std::string& devicePath = path);

    // The identifiers of a list's text, in order. Lines end at "\n" (a "\r"
    // before it is dropped, so Windows line ends work); blank lines, lines
    // that are not UTF-8, and repeats of an identifier already taken are
    // skipped; blanks around an identifier are trimmed. `truncated` says the
    // text was cut off, so its last line may be partial and is dropped.
    static std::vector<std::string> bundleIdentifiersFromText(std::string_view text, bool truncated = false);
};
