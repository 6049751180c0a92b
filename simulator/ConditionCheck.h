#pragma once

#include "scenario/Command.h"

#include <functional>
#include <string>
#include <variant>

namespace sim {

using Condition = std::variant<ExpectPropertyCommand, ExpectAbsentCommand, ExpectHostCommand>;

// What checking a condition found, worded for messages.
struct ConditionResult {
    bool held { false };
    std::string expected; // "#_timeLabel text to be \"9:41\""
    std::string found; // "\"9:42\"", "nothing", "a view"
    // When the target matched several views: which ones ("" otherwise).
    std::string matches;

    // "expected #x text to be 1, found 2 (#x matched 2 views: ...)"
    std::string failure() const;
};

// Checks an `expect` (or what `advance until` waits for) against the screen
// and the host as they are now.
class ConditionCheck {
public:
    // `host` makes the dump's host object, only when the condition needs it.
    // Without `describeMatches`, a condition that does not hold leaves
    // `matches` empty: `advance until` checks again and again and words a
    // failure only at its deadline, so it asks for the walk over the views
    // that lists them only then.
    static ConditionResult evaluate(const Condition&, const std::function<nlohmann::json()>& host, bool describeMatches = true);
    static Condition conditionOf(const Command&);
};

}
