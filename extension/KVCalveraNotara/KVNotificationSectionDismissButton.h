#pragma once

#include <UIKit/UIButton.h>

class CVNotificationSection;

// The faint cross in an app section's header: removes every notification of
// that app, without asking, and makes the table reload.
class KVNotificationSectionDismissButton final : public UIButton {
    OBJC_CLASS(KVNotificationSectionDismissButton)
public:
    static RefPtr<KVNotificationSectionDismissButton> dismissButtonWithFrame(CGRect, CVNotificationSection*);

    CVNotificationSection* section() const { return _section.get(); }
    void setSection(CVNotificationSection* section) { _section = section; }
    void buttonReleased(NSObject* sender);

    RefPtr<CVNotificationSection> _section;
};
