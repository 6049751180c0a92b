#pragma once

#include <objc/objc.h>

class BBBulletin;

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// The bulletin board: the store of delivered notifications that the
// notification centre lists, over the world's notifications. Sections are
// apps in the order of their first delivery, bulletins in the order of
// delivery; every answer is a fresh snapshot.
class BBServer final : public NSObject {
    OBJC_CLASS(BBServer)
public:
    static RefPtr<BBServer> sharedInstance();

    // NSArray of NSString section identifiers (bundle identifiers).
    StrongId allSectionIDs() const;
    // NSArray of BBBulletin; empty for an unknown section.
    StrongId bulletinsForSectionID(const std::string&) const;
    // Whether the user lets the system group notifications by app.
    bool groupsBulletinsByApp() const;

    // Removes one bulletin; false when it is gone already.
    bool removeBulletinID(const std::string&);
    // Removes every bulletin of the section; answers how many went.
    long removeBulletinsInSectionID(const std::string&);
    // Runs the bulletin's button at `index` (recorded in the world's actions);
    // the bulletin is then cleared, as SpringBoard clears a notification
    // whose action ran. False for a gone bulletin or an index out of range.
    bool performActionAtIndexForBulletinID(long index, const std::string&);

private:
    // The store's sections in order of first delivery, each with the
    // bulletins of its notifications in order, worked out again only when
    // the store changed: a catalogue asks for every section in turn, which
    // walking the whole store each time would make quadratic. As SpringBoard's
    // bulletin server, it keeps a notification's bulletin for as long as the
    // notification is there.
    struct Section {
        std::string identifier;
        std::vector<StrongId> bulletins;
    };
    const std::vector<Section>& sections() const;

    mutable std::vector<Section> m_sections;
    mutable std::unordered_map<std::string, size_t> m_sectionIndex;
    mutable uint64_t m_sectionsRevision { UINT64_MAX };
};
