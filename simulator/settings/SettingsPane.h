#pragma once

#include "scenario/Command.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sim {

// One preference as the settings pane describes it: a specifier of the
// pane's Root.plist that has a `key`. The cell kind says what the Settings
// app lets the user store, and so what the extension expects to read.
struct PreferenceSpecifier {
    enum class Cell : uint8_t { Switch, LinkList, EditText, Slider };

    Cell cell { Cell::Switch };
    std::string key;
    std::string label;
    std::string group; // the label of the group cell above it
    PrefsValue defaultValue;
    // PSLinkListCell: the values a user can pick and their titles.
    std::vector<int64_t> validValues;
    std::vector<std::string> validTitles;
    // PSSliderCell: the slider's ends.
    double minimum { 0 };
    double maximum { 0 };
    // PSEditTextCell: the hint shown in an empty field; "#rrggbb" marks a colour.
    std::string placeholder;
    bool numeric { false };

    bool isColor() const { return cell == Cell::EditText && placeholder == "#rrggbb"; }
    // What the key takes, in words: "yes or no", "1 (Lock screen), 2 (...)", ...
    std::string acceptedValues() const;
    // Why `value` is not one the pane could have stored for this key, or nothing.
    std::optional<std::string> problemWith(const PrefsValue& value) const;
};

// The settings pane the extension ships (Root.plist, read through the
// Foundation layer's property-list reader): the one list of the preference
// keys, with their kinds, allowed values and defaults.
class SettingsPane {
public:
    // Reads a specifier list; an error message names the file and what is wrong.
    static std::optional<SettingsPane> load(const std::filesystem::path& rootPlist, std::string& error);

    const std::vector<PreferenceSpecifier>& specifiers() const { return m_specifiers; }
    const PreferenceSpecifier* specifierForKey(std::string_view key) const;
    // The warning for `prefs KEY VALUE`, or nothing when the pane could have written it:
    // an unknown key (with the nearest known one), or a value the key does not take.
    std::optional<std::string> checkPreference(std::string_view key, const PrefsValue& value) const;

private:
    std::vector<PreferenceSpecifier> m_specifiers;
};

}
