#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace sim {

// Whether a value found in a dump is the value an `expect` asked for.
// Numbers match within a millionth (relative, or absolute near zero), so that
// a frame computed in floating point equals the 187.5 a scenario writes, and
// an integer equals the same decimal; strings, booleans and null match
// exactly; arrays and objects match element by element, with the same length
// and the same keys.
bool jsonValuesMatch(const nlohmann::json& found, const nlohmann::json& expected);

// The first difference, worded for a failure message ("at [2]: expected 375,
// found 320"), or nothing when the values match.
std::optional<std::string> jsonMismatch(const nlohmann::json& found, const nlohmann::json& expected);

// Follows path components from `root`: an object's key, or an array's index
// written in decimal. Null when a step leads nowhere.
const nlohmann::json* walkJsonPath(const nlohmann::json& root, std::span<const std::string> path);

// Looks `host.timer.state` or `host.alerts.0.title` up in a whole dump (the
// object holding "host"). Null when the text does not start with "host" or
// the path leads nowhere.
const nlohmann::json* walkHostPath(const nlohmann::json& dump, std::string_view hostPath);

// A value as a message shows it: compact JSON, cut short when long.
std::string describeJson(const nlohmann::json&);

}
