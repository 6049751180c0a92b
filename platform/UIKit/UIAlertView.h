#pragma once

#include "UIView.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class UIGestureRecognizer;
class UILabel;
class UIWindow;

// A modal alert, as UIKit's UIAlertView: a title, an optional message and a
// row of buttons (the cancel button first), drawn as iOS 9 draws it: a
// rounded, nearly white box in the middle of a dimmed screen, with the
// buttons' titles in the system blue, the cancel button's in bold.
//
// `show` puts it in an alert-level window of its own and keeps it alive
// until a button is tapped; the delegate is then told
// `alertView:clickedButtonAtIndex:` (0 is the cancel button when there is
// one) and the alert goes away. Whoever hosts the process may watch alerts
// being shown (the host keeps them for its records).
class UIAlertView : public UIView {
    OBJC_CLASS(UIAlertView)
public:
    static constexpr double boxWidth = 270;
    static constexpr double buttonHeight = 44;

    UIAlertView(std::optional<std::string> title, std::optional<std::string> message, NSObject* delegate,
        std::optional<std::string> cancelButtonTitle, std::vector<std::string> otherButtonTitles);

    const std::optional<std::string>& title() const { return m_title; }
    const std::optional<std::string>& message() const { return m_message; }
    const std::optional<std::string>& cancelButtonTitle() const { return m_cancelButtonTitle; }
    const std::vector<std::string>& otherButtonTitles() const { return m_otherButtonTitles; }
    NSObject* delegate() const { return m_delegate.get(); }
    bool isVisible() const { return m_window != nullptr; }

    void show();
    void dismissWithClickedButtonIndex(long index, bool animated);
    void buttonTapped(UIGestureRecognizer*);

    // Told about every alert that is shown.
    static void setPresentationObserver(std::function<void(const UIAlertView&)>);
    // The alerts on screen now, oldest first.
    static std::vector<UIAlertView*> visibleAlerts();

private:
    void layOut(CGRect screen);
    std::vector<std::string> buttonTitles() const;

    std::optional<std::string> m_title;
    std::optional<std::string> m_message;
    RefPtr<NSObject> m_delegate;
    std::optional<std::string> m_cancelButtonTitle;
    std::vector<std::string> m_otherButtonTitles;
    RefPtr<UIWindow> m_window;
    RefPtr<UILabel> m_titleLabel;
    RefPtr<UILabel> m_messageLabel;
    std::vector<RefPtr<UIView>> m_separators;
    std::vector<RefPtr<UILabel>> m_buttons;
};
