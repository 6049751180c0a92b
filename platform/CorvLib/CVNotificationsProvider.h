#pragma once

#include <Foundation/NSArray.h>
#include <objc/objc.h>


// The maker library's notification source. `currentNotificationsCatalogue`
// reads the host's bulletin board (BBServer, by name) and answers a
// catalogue: its `sections` are CVNotificationSection records, apps in the
// order of their first notification. Null when there is no bulletin board.
class CVNotificationsProvider final : public NSObject {
    OBJC_CLASS(CVNotificationsProvider)
public:
    CVNotificationsProvider() = default;
    explicit CVNotificationsProvider(RefPtr<NSArray> sections)
        : m_sections(std::move(sections))
    {
    }
    static RefPtr<CVNotificationsProvider> currentNotificationsCatalogue();

    RefPtr<NSArray> sections() const { return m_sections; }

    // The host's bulletin board, or null when the host has none.
    static StrongId bulletinBoard();

private:
    RefPtr<NSArray> m_sections;
};
