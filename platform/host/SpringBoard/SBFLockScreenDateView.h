#pragma once

#include <Foundation/NSDate.h>
#include <UIKit/UILabel.h>

// The lock screen's big clock and the date under it. The host tells it the
// time each minute (`setDate`); the two labels are placed by
// `_layoutTimeLabel` and `_layoutDateLabel`, sent through the runtime from
// layoutSubviews.
class SBFLockScreenDateView final : public UIView {
    OBJC_CLASS(SBFLockScreenDateView)
public:
    SBFLockScreenDateView() = default;

    StrongId initWithFrame(CGRect) override;
    void layoutSubviews() override;
    void layoutTimeLabel();
    void layoutDateLabel();

    void setDate(const NSDate*);
    // The height the clock and date need at a width.
    static double preferredHeight() { return 128; }

    // Instance variables that clients read by name through the runtime.
    RefPtr<UILabel> m_legibilityTimeLabel;
    RefPtr<UILabel> m_legibilityDateLabel;
};
