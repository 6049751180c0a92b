#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// One word of a scenario line. `key=value` words are options: `key` holds the
// key and `text` the value.
struct Word {
    std::string text; // with quotes removed and escapes decoded
    std::string key; // empty unless this is an option
    bool quoted { false }; // the word (or the option's value) is one quoted string, as in "a b"
    size_t begin { 0 }; // the word's bytes in the line, quotes and key included
    size_t end { 0 };
    // Set when a quoted part held an escape other than \n, \" and \\. The
    // line still splits into words (an `expect` value is read as JSON, with
    // JSON's own escapes), but the decoded text must not be used.
    std::optional<std::string> problem;

    bool isOption() const { return !key.empty(); }
};

struct LexedLine {
    std::vector<Word> words;
    std::optional<std::string> error; // the line cannot be split into words
};

// Splits scenario text into lines and lines into words. Blanks (spaces and
// tabs) separate words; double quotes group blanks into a word and may also
// stand inside one (`title="Hello there"`). A `#` that opens a line, or that
// stands alone as a word, starts a comment; `#name` and `#1badf8` are words.
class ScenarioLexer {
public:
    static std::vector<std::string_view> splitLines(std::string_view text);
    static LexedLine splitWords(std::string_view line);
};

}
