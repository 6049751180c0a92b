#include "ConditionCheck.h"

#include "ViewTree.h"
#include "scenario/ExpectComparison.h"

#include <UIKit/UIView.h>

namespace sim {

std::string ConditionResult::failure() const
{
    return "expected " + expected + ", found " + found + (matches.empty() ? "" : " (" + matches + ")");
}

static std::string joinedPath(const std::string& start, const std::vector<std::string>& path)
{
    std::string text = start;
    for (const std::string& part : path)
        text += (text.empty() ? "" : ".") + part;
    return text;
}

ConditionResult ConditionCheck::evaluate(const Condition& condition, const std::function<nlohmann::json()>& host, bool describeMatches)
{
    ConditionResult result;
    if (const auto* expect = std::get_if<ExpectPropertyCommand>(&condition)) {
        result.expected = expect->target.toString() + " " + joinedPath("", expect->property) + " to be " + describeJson(expect->value);
        UIView* view = ViewTree::find(expect->target);
        if (!view) {
            result.found = "no view matching it";
            return result;
        }
        nlohmann::json node = ViewTree::dumpView(*view);
        const nlohmann::json* found = walkJsonPath(node, expect->property);
        result.held = found && jsonValuesMatch(*found, expect->value);
        result.found = found ? describeJson(*found) : std::string("no such property");
        if (!result.held && describeMatches)
            result.matches = ViewTree::describeMatches(expect->target);
    } else if (const auto* absent = std::get_if<ExpectAbsentCommand>(&condition)) {
        result.expected = "nothing to match " + absent->target.toString();
        result.held = !ViewTree::find(absent->target);
        result.found = result.held ? "nothing" : "a view";
        if (!result.held && describeMatches)
            result.matches = ViewTree::describeMatches(absent->target);
    } else {
        const auto& expectHost = std::get<ExpectHostCommand>(condition);
        result.expected = joinedPath("host", expectHost.path) + " to be " + describeJson(expectHost.value);
        nlohmann::json whole = host();
        const nlohmann::json* found = walkJsonPath(whole, expectHost.path);
        result.held = found && jsonValuesMatch(*found, expectHost.value);
        result.found = found ? describeJson(*found) : std::string("nothing there");
    }
    return result;
}

Condition ConditionCheck::conditionOf(const Command& command)
{
    switch (command.kind) {
    case CommandKind::ExpectProperty:
        return command.as<ExpectPropertyCommand>();
    case CommandKind::ExpectAbsent:
        return command.as<ExpectAbsentCommand>();
    case CommandKind::ExpectHost:
        return command.as<ExpectHostCommand>();
    default:
        return command.as<AdvanceUntilCommand>().condition;
    }
}

}
