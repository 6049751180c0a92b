#pragma once

#include <objc/objc.h>

#include <map>
#include <string>

// A dictionary with string keys, as property lists and host records use them.
class NSDictionary final : public NSObject {
    OBJC_CLASS(NSDictionary)
public:
    NSDictionary() = default;
    static RefPtr<NSDictionary> create() { return make<NSDictionary>(); }
    // The dictionary in a property-list file at a device path; null when the
    // file is missing, unreadable, not a property list or not a dictionary.
    static RefPtr<NSDictionary> dictionaryWithContentsOfFile(const std::string& path);

    size_t count() const { return m_entries.size(); }
    StrongId objectForKey(const std::string& key) const
    {
        auto it = m_entries.find(key);
        return it == m_entries.end() ? nullptr : it->second;
    }
    void setObject(StrongId object, const std::string& key) { m_entries[key] = std::move(object); }
    void removeObjectForKey(const std::string& key) { m_entries.erase(key); }
    const std::map<std::string, StrongId>& entries() const { return m_entries; }

private:
    std::map<std::string, StrongId> m_entries;
};
