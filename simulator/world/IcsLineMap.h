#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

// Where things are in an iCalendar file, for messages: libical parses the
// file but keeps no line numbers, so the logical lines (folded lines joined,
// as RFC 5545 folds them) are kept here with the line each starts on.
// libical builds its components in the order their BEGIN lines come, which
// lets a component be matched with its BEGIN line.
class IcsLineMap {
public:
    explicit IcsLineMap(std::string_view text);

    struct LogicalLine {
        int number { 0 }; // 1-based line of the file where it starts
        std::string text; // unfolded, without the line break
    };

    const std::vector<LogicalLine>& lines() const { return m_lines; }
    // The first line that is not blank, or null for a blank file.
    const LogicalLine* firstContentLine() const;
    // Lines of BEGIN:... in file order.
    const std::vector<int>& beginLines() const { return m_beginLines; }
    // The first line at or after `fromLine` holding `snippet`, or 0.
    int lineContaining(std::string_view snippet, int fromLine) const;

private:
    std::vector<LogicalLine> m_lines;
    std::vector<int> m_beginLines;
};

}
