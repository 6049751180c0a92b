#pragma once

#include "CVAppItem.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>
#include <objc/objc.h>

#include <string>

class UIImage;

// The maker library's record of one delivered notification, read from the
// host's bulletin board (BBServer, by name). Texts the sender left out are
// null. The record is a snapshot: removing the notification or running one
// of its actions goes to the store, and the next catalogue no longer has it.
class CVNotificationRow final : public NSObject {
    OBJC_CLASS(CVNotificationRow)
public:
    CVNotificationRow() = default;
    // `bulletin` is the host's BBBulletin; `app` the app it belongs to (may be null).
    CVNotificationRow(StrongId bulletin, RefPtr<CVAppItem> app);

    const std::string& sectionID() const { return m_sectionID; }
    StrongId bulletin() const { return m_bulletin; }
    RefPtr<CVAppItem> app() const { return m_app; }
    void setApp(RefPtr<CVAppItem> app) { m_app = std::move(app); }
    // The app's icon; null without an app.
    RefPtr<UIImage> icon() const;
    RefPtr<NSString> title() const { return m_title; }
    RefPtr<NSString> subtitle() const { return m_subtitle; }
    RefPtr<NSString> message() const { return m_message; }
    RefPtr<NSDate> date() const { return m_date; }
    // Null when the notification has no picture.
    RefPtr<UIImage> attachmentImage() const;
    // The notification's own actions, an NSArray (empty when it has none).
    RefPtr<NSArray> notificationActions() const { return m_actions; }

    // Runs the action at `index` in the store; false when it is out of range
    // or the notification is gone.
    bool invokeNotificationActionWithIndex(long index);
    // Takes the notification out of the store; false when it was gone already.
    bool removeActualNotification();

private:
    std::string m_sectionID;
    std::string m_bulletinID;
    StrongId m_bulletin;
    RefPtr<CVAppItem> m_app;
    RefPtr<NSString> m_title;
    RefPtr<NSString> m_subtitle;
    RefPtr<NSString> m_message;
    RefPtr<NSDate> m_date;
    RefPtr<NSArray> m_actions;
};
