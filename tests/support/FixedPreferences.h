#pragma once

#include <CorvLib/CVPreferenceManager.h>
#include <Foundation/NSString.h>

#include <map>
#include <string>

// Preferences as a test sets them, all as strings (read with Foundation's
// conversions, as the plist's values are); any other key answers its fallback.
class FixedPreferences final : public CVPreferenceManager {
public:
    std::map<std::string, std::string> values;
    StrongId valueForkey(const std::string& key, const std::string& fallback) const override
    {
        auto it = values.find(key);
        return StrongId(NSString::create(it == values.end() ? fallback : it->second));
    }
};
