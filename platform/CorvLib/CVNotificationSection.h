#pragma once

#include "CVAppItem.h"

#include <Foundation/NSArray.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSString.h>
#include <objc/objc.h>

#include <string>

class UIImage;
class UIImageView;

// The maker library's record of one app's delivered notifications: its rows
// in the order of delivery. `sectionApp` is null when the system does not
// group notifications by app (or the app is not installed).
class CVNotificationSection final : public NSObject {
    OBJC_CLASS(CVNotificationSection)
public:
    CVNotificationSection() = default;
    CVNotificationSection(std::string sectionID, RefPtr<CVAppItem> sectionApp, RefPtr<NSArray> rows);

    const std::string& sectionID() const { return m_sectionID; }
    RefPtr<NSArray> rows() const { return m_rows; }
    RefPtr<CVAppItem> sectionApp() const { return m_sectionApp; }
    // The app's icon, null without an app.
    RefPtr<UIImage> sectionIcon() const;
    // A new image view of the icon, `size` points square.
    RefPtr<UIImageView> sectionAppIconImageViewWithSize(double size) const;

    // Takes every notification of the app out of the store (as it is now,
    // not only the rows of this snapshot); answers how many went.
    long removeActualNotificationSection();

private:
    std::string m_sectionID;
    RefPtr<CVAppItem> m_sectionApp;
    RefPtr<NSArray> m_rows;
};
