#pragma once

#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

// SpringBoard's status bar: signal dots and carrier on the left, a padlock
// (while locked) or the time in the middle, the battery's percentage and
// gauge on the right. Style 0 draws dark content, any other light content.
class SBStatusBarView final : public UIView {
    OBJC_CLASS(SBStatusBarView)
public:
    struct Content {
        bool locked { true };
        std::string time;
        double batteryLevel { 1 };
        bool charging { false };
        long long style { 1 };
    };

    SBStatusBarView(CGRect frame, double scale);
    SBStatusBarView() = default;

    void setContent(const Content&);
    void layoutSubviews() override;
    static constexpr double height = 20;

private:
    double m_scale { 2 };
    Content m_content;
    bool m_hasContent { false };
    RefPtr<UIImageView> m_signalView;
    RefPtr<UILabel> m_carrierLabel;
    RefPtr<UIImageView> m_lockView;
    RefPtr<UILabel> m_timeLabel;
    RefPtr<UILabel> m_batteryPercentLabel;
    RefPtr<UIImageView> m_batteryView;
};
