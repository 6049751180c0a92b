#pragma once

#include "BBAction.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>
#include <objc/objc.h>

#include <optional>
#include <string>
#include <vector>

class UIImage;

// One bulletin, as the bulletin board hands it out: a delivered notification
// of the notification centre, or what a full-screen alert shows. Texts the
// sender left out are null, not empty.
class BBBulletin final : public NSObject {
    OBJC_CLASS(BBBulletin)
public:
    BBBulletin() = default;
    BBBulletin(std::string section, std::optional<std::string> title, std::optional<std::string> message)
        : m_section(std::move(section))
        , m_title(text(title))
        , m_message(text(message))
    {
    }

    // The app it comes from ("com.apple.mobiletimer").
    const std::string& section() const { return m_section; }
    const std::string& sectionID() const { return m_section; }
    // The store's identifier of a delivered notification ("" otherwise).
    const std::string& bulletinID() const { return m_bulletinID; }
    void setBulletinID(std::string identifier) { m_bulletinID = std::move(identifier); }
    RefPtr<NSString> title() const { return m_title; }
    RefPtr<NSString> subtitle() const { return m_subtitle; }
    void setSubtitle(const std::optional<std::string>& subtitle) { m_subtitle = text(subtitle); }
    RefPtr<NSString> message() const { return m_message; }
    RefPtr<NSDate> date() const { return m_date; }
    void setDate(RefPtr<NSDate> date) { m_date = std::move(date); }

    // What tapping the notification does: an action whose launchURL is null
    // when the sender gave none (then the app itself opens).
    RefPtr<BBAction> defaultAction() const { return m_defaultAction; }
    void setDefaultAction(RefPtr<BBAction> action) { m_defaultAction = std::move(action); }
    // The notification's own buttons (Reply, Mark as Read, ...), as an NSArray of BBAction.
    StrongId supplementaryActions() const;
    void setSupplementaryActions(std::vector<RefPtr<BBAction>> actions) { m_supplementaryActions = std::move(actions); }

    // The attached picture, drawn by the host when the sender attached one.
    bool hasAttachment() const { return m_hasAttachment; }
    void setHasAttachment(bool has) { m_hasAttachment = has; }
    RefPtr<UIImage> attachmentImage() const;

private:
    static RefPtr<NSString> text(const std::optional<std::string>& value) { return value ? NSString::create(*value) : nullptr; }

    std::string m_section;
    std::string m_bulletinID;
    // Made once: the board keeps its bulletins, and every catalogue asks
    // each for its texts (strings never change, so they are shared).
    RefPtr<NSString> m_title;
    RefPtr<NSString> m_subtitle;
    RefPtr<NSString> m_message;
    RefPtr<NSDate> m_date;
    RefPtr<BBAction> m_defaultAction;
    std::vector<RefPtr<BBAction>> m_supplementaryActions;
    bool m_hasAttachment { false };
};
