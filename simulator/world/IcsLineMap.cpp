#include "IcsLineMap.h"

#include <algorithm>
#include <cctype>

namespace sim {

static bool startsWithIgnoringCase(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size()
        && std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) { return std::toupper(static_cast<unsigned char>(a)) == b; });
}

IcsLineMap::IcsLineMap(std::string_view text)
{
    // A byte-order mark some programs write before the first line.
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    int number = 0;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        std::string_view line = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
        start = end == std::string_view::npos ? text.size() : end + 1;
        ++number;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        // A line that starts with a blank continues the one before it.
        if (!line.empty() && (line[0] == ' ' || line[0] == '\t') && !m_lines.empty()) {
            m_lines.back().text.append(line.substr(1));
            continue;
        }
        m_lines.push_back({ number, std::string(line) });
    }
    for (const LogicalLine& line : m_lines) {
        if (startsWithIgnoringCase(line.text, "BEGIN:"))
            m_beginLines.push_back(line.number);
    }
}

const IcsLineMap::LogicalLine* IcsLineMap::firstContentLine() const
{
    auto found = std::find_if(m_lines.begin(), m_lines.end(), [](const LogicalLine& line) {
        return std::any_of(line.text.begin(), line.text.end(), [](unsigned char c) { return !std::isspace(c); });
    });
    return found == m_lines.end() ? nullptr : &*found;
}

int IcsLineMap::lineContaining(std::string_view snippet, int fromLine) const
{
    if (snippet.empty())
        return 0;
    for (const LogicalLine& line : m_lines) {
        if (line.number >= fromLine && line.text.find(snippet) != std::string::npos)
            return line.number;
    }
    return 0;
}

}
