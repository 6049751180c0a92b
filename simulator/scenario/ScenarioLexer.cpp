#include "ScenarioLexer.h"

#include <cstdio>

namespace sim {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isKeyCharacter(char c, bool first)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (!first && ((c >= '0' && c <= '9') || c == '_' || c == '-'));
}

// Rejects what would reach the host as garbage: bytes that are not UTF-8 and
// control characters other than tabs.
std::optional<std::string> checkCharacters(std::string_view line)
{
    for (size_t i = 0; i < line.size();) {
        auto byte = static_cast<unsigned char>(line[i]);
        if (byte < 0x20 && byte != '\t') {
            char message[64];
            std::snprintf(message, sizeof message, "control character 0x%02x in the line", byte);
            return std::string(message);
        }
        if (byte == 0x7f)
            return std::string("control character 0x7f in the line");
        if (byte < 0x80) {
            ++i;
            continue;
        }
        size_t length = byte >= 0xf0 && byte <= 0xf4 ? 4 : byte >= 0xe0 ? 3
            : byte >= 0xc2 && byte <= 0xdf                              ? 2
                                                                        : 0;
        if (byte >= 0xf5)
            length = 0;
        if (length == 0 || i + length > line.size())
            return std::string("the line is not valid UTF-8");
        uint32_t codePoint = byte & (0xff >> (length + 1));
        for (size_t k = 1; k < length; ++k) {
            auto continuation = static_cast<unsigned char>(line[i + k]);
            if ((continuation & 0xc0) != 0x80)
                return std::string("the line is not valid UTF-8");
            codePoint = (codePoint << 6) | (continuation & 0x3f);
        }
        bool overlong = (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
        if (overlong || codePoint > 0x10ffff || (codePoint >= 0xd800 && codePoint <= 0xdfff))
            return std::string("the line is not valid UTF-8");
        i += length;
    }
    return std::nullopt;
}

}

std::vector<std::string_view> ScenarioLexer::splitLines(std::string_view text)
{
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        size_t newline = text.find('\n');
        std::string_view line = text.substr(0, newline);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        if (newline == std::string_view::npos)
            break;
        text.remove_prefix(newline + 1);
    }
    return lines;
}

LexedLine ScenarioLexer::splitWords(std::string_view line)
{
    LexedLine result;
    if (auto error = checkCharacters(line)) {
        result.error = std::move(error);
        return result;
    }

    size_t i = 0;
    while (true) {
        while (i < line.size() && isBlank(line[i]))
            ++i;
        if (i == line.size())
            break;
        if (line[i] == '#' && (result.words.empty() || i + 1 == line.size() || isBlank(line[i + 1])))
            break;

        Word word;
        word.begin = i;
        size_t quotedParts = 0;
        bool endsWithQuote = false;
        while (i < line.size() && !isBlank(line[i])) {
            if (line[i] != '"') {
                word.text += line[i++];
                endsWithQuote = false;
                continue;
            }
            ++i;
            bool closed = false;
            while (i < line.size()) {
                char c = line[i];
                if (c == '"') {
                    ++i;
                    closed = true;
                    break;
                }
                if (c == '\\' && i + 1 < line.size()) {
                    char escaped = line[i + 1];
                    if (escaped == 'n')
                        word.text += '\n';
                    else if (escaped == '"' || escaped == '\\')
                        word.text += escaped;
                    else if (!word.problem)
                        word.problem = "unknown escape '\\" + std::string(1, escaped) + "' in a quoted word (use \\n, \\\" or \\\\)";
                    i += 2;
                    continue;
                }
                word.text += c;
                ++i;
            }
            if (!closed) {
                result.error = "unterminated quote";
                return result;
            }
            ++quotedParts;
            endsWithQuote = true;
        }
        word.end = i;

        std::string_view raw = line.substr(word.begin, word.end - word.begin);
        size_t keyLength = 0;
        while (keyLength < raw.size() && isKeyCharacter(raw[keyLength], keyLength == 0))
            ++keyLength;
        if (keyLength > 0 && keyLength < raw.size() && raw[keyLength] == '=') {
            // The key's bytes were copied into `text` unchanged.
            word.key = word.text.substr(0, keyLength);
            word.text.erase(0, keyLength + 1);
            word.quoted = raw.size() > keyLength + 1 && raw[keyLength + 1] == '"' && quotedParts == 1 && endsWithQuote;
        } else {
            word.quoted = raw[0] == '"' && quotedParts == 1 && endsWithQuote;
        }
        result.words.push_back(std::move(word));
    }
    return result;
}

}
