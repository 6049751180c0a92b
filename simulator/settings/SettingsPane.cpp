#include "SettingsPane.h"

#include "scenario/ScenarioLineReader.h"
#include "scenario/ScenarioValues.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSData.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSPropertyListSerialization.h>
#include <Foundation/NSString.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

namespace sim {

namespace {

// A value as a scenario would write it.
std::string describe(const PrefsValue& value)
{
    return std::visit(
        [](const auto& v) -> std::string {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, bool>)
                return v ? "yes" : "no";
            else if constexpr (std::is_same_v<T, int64_t>)
                return std::to_string(v);
            else if constexpr (std::is_same_v<T, double>)
                return formatDecimal(v);
            else
                return "\"" + shownInMessage(v) + "\"";
        },
        value);
}

std::optional<double> numberIn(const PrefsValue& value)
{
    if (auto* integer = std::get_if<int64_t>(&value))
        return static_cast<double>(*integer);
    if (auto* real = std::get_if<double>(&value))
        return *real;
    return std::nullopt;
}

// A text field holds text: digits typed into a numeric one are a string too.
std::optional<double> numberInText(const std::string& text)
{
    if (text.empty())
        return std::nullopt;
    char* end = nullptr;
    double value = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool isHexColor(const std::string& text)
{
    return text.size() == 7 && text[0] == '#' && std::all_of(text.begin() + 1, text.end(), [](unsigned char c) { return std::isxdigit(c); });
}

std::optional<PrefsValue> prefsValueOf(NSObject* object)
{
    if (auto* string = objc::cast<NSString>(object))
        return PrefsValue(string->string());
    auto* number = objc::cast<NSNumber>(object);
    if (!number)
        return std::nullopt;
    switch (number->kind()) {
    case NSNumber::Kind::Bool:
        return PrefsValue(number->boolValue());
    case NSNumber::Kind::Integer:
    case NSNumber::Kind::Unsigned:
        return PrefsValue(static_cast<int64_t>(number->longLongValue()));
    case NSNumber::Kind::Real:
        return PrefsValue(number->doubleValue());
    }
    return std::nullopt;
}

std::optional<PreferenceSpecifier::Cell> cellNamed(const std::string& name)
{
    using Cell = PreferenceSpecifier::Cell;
    if (name == "PSSwitchCell")
        return Cell::Switch;
    if (name == "PSLinkListCell")
        return Cell::LinkList;
    if (name == "PSEditTextCell")
        return Cell::EditText;
    if (name == "PSSliderCell")
        return Cell::Slider;
    return std::nullopt;
}

std::string stringFor(NSDictionary* item, const char* key) { return NSStringValue(item->objectForKey(key).get()); }

double numberFor(NSDictionary* item, const char* key)
{
    auto* number = objc::cast<NSNumber>(item->objectForKey(key).get());
    return number ? number->doubleValue() : 0;
}

// One keyed specifier, or an error naming what it lacks.
std::optional<PreferenceSpecifier> readSpecifier(NSDictionary* item, PreferenceSpecifier::Cell cell, const std::string& group, std::string& error)
{
    PreferenceSpecifier specifier;
    specifier.cell = cell;
    specifier.key = stringFor(item, "key");
    specifier.label = stringFor(item, "label");
    specifier.group = group;
    specifier.placeholder = stringFor(item, "placeholder");
    if (auto* numeric = objc::cast<NSNumber>(item->objectForKey("isNumeric").get()))
        specifier.numeric = numeric->boolValue();
    auto defaultValue = prefsValueOf(item->objectForKey("default").get());
    if (specifier.key.empty() || specifier.label.empty() || !defaultValue) {
        error = "a " + stringFor(item, "cell") + " needs a key, a label and a default (key '" + specifier.key + "')";
        return std::nullopt;
    }
    specifier.defaultValue = *defaultValue;
    if (cell == PreferenceSpecifier::Cell::LinkList) {
        auto* values = objc::cast<NSArray>(item->objectForKey("validValues").get());
        auto* titles = objc::cast<NSArray>(item->objectForKey("validTitles").get());
        if (!values || !titles || values->count() != titles->count() || !values->count()) {
            error = "the list of '" + specifier.key + "' needs as many validTitles as validValues";
            return std::nullopt;
        }
        for (size_t i = 0; i < values->count(); ++i) {
            auto* number = objc::cast<NSNumber>(values->objectAtIndex(i).get());
            if (!number || number->kind() == NSNumber::Kind::Real || number->kind() == NSNumber::Kind::Bool) {
                error = "the validValues of '" + specifier.key + "' must be integers";
                return std::nullopt;
            }
            specifier.validValues.push_back(number->longLongValue());
            specifier.validTitles.push_back(NSStringValue(titles->objectAtIndex(i).get()));
        }
    }
    if (cell == PreferenceSpecifier::Cell::Slider) {
        specifier.minimum = numberFor(item, "min");
        specifier.maximum = numberFor(item, "max");
        if (!(specifier.minimum < specifier.maximum)) {
            error = "the slider of '" + specifier.key + "' needs min below max";
            return std::nullopt;
        }
    }
    return specifier;
}

}

std::string PreferenceSpecifier::acceptedValues() const
{
    switch (cell) {
    case Cell::Switch:
        return "yes or no";
    case Cell::LinkList: {
        std::string text;
        for (size_t i = 0; i < validValues.size(); ++i) {
            if (i)
                text += i + 1 == validValues.size() ? " or " : ", ";
            text += std::to_string(validValues[i]) + " (" + validTitles[i] + ")";
        }
        return text;
    }
    case Cell::Slider:
        return "a number from " + formatDecimal(minimum) + " to " + formatDecimal(maximum);
    case Cell::EditText:
        if (isColor())
            return "a colour written #rrggbb";
        return numeric ? "a number" : "text (quote it)";
    }
    return {};
}

std::optional<std::string> PreferenceSpecifier::problemWith(const PrefsValue& value) const
{
    bool accepted = false;
    switch (cell) {
    case Cell::Switch:
        accepted = std::holds_alternative<bool>(value);
        break;
    case Cell::LinkList:
        if (auto* integer = std::get_if<int64_t>(&value))
            accepted = std::find(validValues.begin(), validValues.end(), *integer) != validValues.end();
        break;
    case Cell::Slider:
        if (auto number = numberIn(value))
            accepted = *number >= minimum && *number <= maximum;
        break;
    case Cell::EditText:
        if (auto* text = std::get_if<std::string>(&value))
            accepted = isColor() ? isHexColor(*text) : !numeric || numberInText(*text);
        else
            accepted = numeric && numberIn(value);
        break;
    }
    if (accepted)
        return std::nullopt;
    return "preference '" + key + "' takes " + acceptedValues() + ", got " + describe(value);
}

std::optional<SettingsPane> SettingsPane::load(const std::filesystem::path& rootPlist, std::string& error)
{
    std::ifstream in(rootPlist, std::ios::binary);
    if (!in) {
        error = "cannot read the settings pane " + rootPlist.string();
        return std::nullopt;
    }
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto data = NSData::dataWithBytes(bytes.data(), bytes.size());
    auto root = objc::castRef<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data.get()));
    auto items = root ? objc::castRef<NSArray>(root->objectForKey("items")) : nullptr;
    if (!items) {
        error = rootPlist.string() + ": not a settings pane (a property list with an array of items)";
        return std::nullopt;
    }
    SettingsPane pane;
    std::string group;
    for (const StrongId& object : items->objects()) {
        auto* item = objc::cast<NSDictionary>(object.get());
        std::string cellName = item ? stringFor(item, "cell") : "";
        if (cellName == "PSGroupCell") {
            group = stringFor(item, "label");
            continue;
        }
        auto cell = cellNamed(cellName);
        if (!item || !item->objectForKey("key"))
            continue; // buttons and links store nothing
        if (!cell) {
            error = rootPlist.string() + ": the key '" + stringFor(item, "key") + "' has a cell the pane does not know ('" + cellName + "')";
            return std::nullopt;
        }
        auto specifier = readSpecifier(item, *cell, group, error);
        if (!specifier) {
            error = rootPlist.string() + ": " + error;
            return std::nullopt;
        }
        pane.m_specifiers.push_back(std::move(*specifier));
    }
    return pane;
}

const PreferenceSpecifier* SettingsPane::specifierForKey(std::string_view key) const
{
    auto found = std::find_if(m_specifiers.begin(), m_specifiers.end(), [&](const PreferenceSpecifier& s) { return s.key == key; });
    return found == m_specifiers.end() ? nullptr : &*found;
}

std::optional<std::string> SettingsPane::checkPreference(std::string_view key, const PrefsValue& value) const
{
    if (const PreferenceSpecifier* specifier = specifierForKey(key))
        return specifier->problemWith(value);
    std::vector<std::string_view> keys;
    for (const PreferenceSpecifier& specifier : m_specifiers)
        keys.push_back(specifier.key);
    return "the extension has no preference '" + shownInMessage(key) + "'" + suggestionFor(key, keys) + " (docs/preferences.md lists them)";
}

}
