#pragma once

#include "Phone.h"

#include "scenario/Command.h"

#include <string>
#include <vector>

namespace sim::live {

// Every line a live session played, as a scenario that replays to the same
// screen: the lines before `boot` (the host's shape and the world it starts
// with), `boot`, then the lines played on the running host. Lines that did
// not hold (a failed expect) or did not play are never in it.
class LiveTranscript {
public:
    struct Line {
        std::string text;
        CommandKind kind { CommandKind::Boot };
        // For a shape line, what it sets: a later line with the same key takes its place.
        std::string shapeKey;
    };

    const std::vector<Line>& beforeBoot() const { return m_beforeBoot; }
    const std::vector<Line>& afterBoot() const { return m_afterBoot; }
    size_t lineCount() const { return m_beforeBoot.size() + 1 + m_afterBoot.size(); }
    std::string text() const;

    // Adds a played line at the end (before `boot` until it is added).
    void append(const Command&, const std::string& text);
    void appendBoot() { m_booted = true; }
    bool isBooted() const { return m_booted; }
    // A shape line (`device`, `locale`, `missing class`...) takes the place
    // of the line that set the same thing, or goes last before `boot`.
    void applyShape(const Command&);

    // What a whole played scenario left: the lines that played and held,
    // each as it played, up to the first line that could not play.
    // `commands` are the scenario's, by line number; `problems` gets the
    // lines that were left out, with their messages.
    struct Problems {
        std::vector<std::string> failed; // expects that did not hold
        std::vector<std::string> errors; // the line that stopped the play
        std::vector<std::string> dropped; // lines after it, never played
    };
    static LiveTranscript fromPlayed(const std::vector<Command>&, const PlayOutcome&, Problems&);

    static std::string shapeKey(const Command&);

private:
    std::vector<Line> m_beforeBoot;
    std::vector<Line> m_afterBoot;
    bool m_booted { false };
};

// A line's messages as one list entry: trimmed, one message per line kept.
std::string trimmedMessage(const std::string&);

}
