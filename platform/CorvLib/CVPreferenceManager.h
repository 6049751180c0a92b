#pragma once

#include <Foundation/NSDictionary.h>
#include <objc/objc.h>

#include <string>

// The maker library's reader of a preferences property list. It reads the
// file once, when it is made, and answers keys from what it read.
//
// The settings pane writes only booleans, numbers and strings. A value of
// any other type (array, dictionary, date, data) is taken as absent, so the
// caller's fallback applies: the callers convert every value with
// boolValue, intValue or floatValue, which those types do not answer.
class CVPreferenceManager : public NSObject {
    OBJC_CLASS(CVPreferenceManager)
public:
    CVPreferenceManager() = default;

    // Reads the property list at a device path; a missing, unreadable or
    // malformed file, or one whose root is not a dictionary, reads as empty.
    // Answers self.
    RefPtr<CVPreferenceManager> initWithContentsOfFile(const std::string& path);

    // The stored string or number for the key, or an NSString of the fallback.
    virtual StrongId valueForkey(const std::string& key, const std::string& fallback) const;

    size_t count() const { return m_preferences ? m_preferences->count() : 0; }

private:
    RefPtr<NSDictionary> m_preferences;
};
