#include "KVAppList.h"

#include <Foundation/NSFileManager.h>

#include <algorithm>
#include <fstream>

static bool isValidUTF8(std::string_view text)
{
    size_t i = 0;
    while (i < text.size()) {
        auto byte = static_cast<unsigned char>(text[i]);
        size_t length = byte < 0x80 ? 1 : (byte >> 5) == 0x6 ? 2 : (byte >> 4) == 0xe ? 3 : (byte >> 3) == 0x1e ? 4 : 0;
        if (!length || i + length > text.size())
            return false;
        uint32_t codePoint = length == 1 ? byte : byte & (0x7f >> length);
        for (size_t k = 1; k < length; ++k) {
            auto continuation = static_cast<unsigned char>(text[i + k]);
            if ((continuation & 0xc0) != 0x80)
                return false;
            codePoint = (codePoint << 6) | (continuation & 0x3f);
        }
        // Overlong forms, surrogates and values past Unicode are not UTF-8.
        static constexpr uint32_t smallest[] = { 0, 0, 0x80, 0x800, 0x10000 };
        if (codePoint < smallest[length] || (codePoint >= 0xd800 && codePoint <= 0xdfff) || codePoint > 0x10ffff)
            return false;
        i += length;
    }
    return true;
}

static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

static std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

void KVAppList::forEachBundleIdentifier(std::string_view text, const std::function<bool(std::string_view)>& visit)
{
    // A byte-order mark some editors put first is not part of the identifier.
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        std::string_view identifier = trimmed(line.substr(0, line.find(':')));
        if (identifier.empty() || !isValidUTF8(identifier))
            continue;
        if (!visit(identifier))
            return;
    }
}

std::vector<std::string> KVAppList::bundleIdentifiersFromText(std::string_view text)
{
    std::vector<std::string> identifiers;
    forEachBundleIdentifier(text, [&](std::string_view identifier) {
        identifiers.emplace_back(identifier);
        return true;
    });
    return identifiers;
}

std::optional<std::string> KVAppList::textFromFile(const std::string& devicePath)
{
    bool isDirectory = false;
    if (!NSFileManager::defaultManager()->fileExistsAtPath(devicePath, &isDirectory) || isDirectory)
        return std::nullopt;
    std::ifstream file(NSFileManager::hostPath(devicePath), std::ios::binary);
    if (!file)
        return std::string {};
    // One byte more than the limit tells whether the file goes on, and if it
    // does, whether the cut fell inside the last line's identifier.
    std::string text(maximumFileLength + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(file.gcount()));
    if (text.size() <= maximumFileLength)
        return text;
    char following = text.back();
    text.pop_back();
    size_t lineStart = text.rfind('\n');
    lineStart = lineStart == std::string::npos ? 0 : lineStart + 1;
    // (Blanks may stand inside an identifier; a "\r" only ends a line.)
    bool identifierEnded = text.find(':', lineStart) != std::string::npos || following == '\n' || following == '\r' || following == ':';
    if (!identifierEnded)
        text.resize(lineStart);
    return text;
}

std::optional<std::vector<std::string>> KVAppList::bundleIdentifiersFromFile(const std::string& devicePath)
{
    auto text = textFromFile(devicePath);
    if (!text)
        return std::nullopt;
    return bundleIdentifiersFromText(*text);
}
