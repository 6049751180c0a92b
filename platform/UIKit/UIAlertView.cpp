#include "UIAlertView.h"

#include "UIFont.h"
#include "UIKitMessaging.h"
#include "UILabel.h"
#include "UIScreen.h"
#include "UITapGestureRecognizer.h"
#include "UIWindow.h"

#include <algorithm>

OBJC_IMPLEMENT_CLASS(UIAlertView, UIView)
{
    c.method<&UIAlertView::show>("show");
    c.method<&UIAlertView::dismissWithClickedButtonIndex>("dismissWithClickedButtonIndex:animated:");
    c.method<&UIAlertView::buttonTapped>("buttonTapped:");
}

static std::function<void(const UIAlertView&)>& presentationObserver()
{
    static auto* observer = new std::function<void(const UIAlertView&)>();
    return *observer;
}

// Shown alerts stay alive until dismissed, as UIKit keeps them.
static std::vector<RefPtr<UIAlertView>>& shownAlerts()
{
    static auto* alerts = new std::vector<RefPtr<UIAlertView>>();
    return *alerts;
}

void UIAlertView::setPresentationObserver(std::function<void(const UIAlertView&)> observer) { presentationObserver() = std::move(observer); }

std::vector<UIAlertView*> UIAlertView::visibleAlerts()
{
    std::vector<UIAlertView*> alerts;
    for (auto& alert : shownAlerts())
        alerts.push_back(alert.get());
    return alerts;
}

static RefPtr<UIColor> systemBlue() { return UIColor::colorWithRed(0, 122 / 255.0, 1, 1); }

UIAlertView::UIAlertView(std::optional<std::string> title, std::optional<std::string> message, NSObject* delegate,
    std::optional<std::string> cancelButtonTitle, std::vector<std::string> otherButtonTitles)
    : m_title(std::move(title))
    , m_message(std::move(message))
    , m_delegate(delegate)
    , m_cancelButtonTitle(std::move(cancelButtonTitle))
    , m_otherButtonTitles(std::move(otherButtonTitles))
{
    setName("UIAlertView");
    setBackgroundColor(UIColor::colorWithWhite(0.97, 0.96));
    layer().setCornerRadius(13);
    setClipsToBounds(true);

    auto makeLabel = [&](const char* name, RefPtr<UIFont> font) {
        auto label = make<UILabel>();
        label->setName(name);
        label->setFont(std::move(font));
        label->setTextColor(UIColor::blackColor());
        label->setTextAlignment(NSTextAlignmentCenter);
        label->setNumberOfLines(0);
        addSubview(label.get());
        return label;
    };
    m_titleLabel = makeLabel("_titleLabel", UIFont::boldSystemFontOfSize(17));
    m_titleLabel->setText(m_title.value_or(""));
    m_messageLabel = makeLabel("_messageLabel", UIFont::systemFontOfSize(13));
    m_messageLabel->setText(m_message.value_or(""));

    auto titles = buttonTitles();
    for (size_t index = 0; index < titles.size(); ++index) {
        auto separator = make<UIView>();
        separator->setName("separator");
        separator->setBackgroundColor(UIColor::colorWithWhite(0.6, 0.5));
        addSubview(separator.get());
        m_separators.push_back(separator);

        bool isCancel = m_cancelButtonTitle && index == 0;
        auto button = make<UILabel>();
        button->setName("button" + std::to_string(index));
        button->setText(titles[index]);
        button->setFont(isCancel ? UIFont::boldSystemFontOfSize(17) : UIFont::systemFontOfSize(17));
        button->setTextColor(systemBlue());
        button->setTextAlignment(NSTextAlignmentCenter);
        button->setNumberOfLines(1);
        button->setUserInteractionEnabled(true);
        button->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("buttonTapped:")).get());
        addSubview(button.get());
        m_buttons.push_back(button);
    }
}

std::vector<std::string> UIAlertView::buttonTitles() const
{
    std::vector<std::string> titles;
    if (m_cancelButtonTitle)
        titles.push_back(*m_cancelButtonTitle);
    titles.insert(titles.end(), m_otherButtonTitles.begin(), m_otherButtonTitles.end());
    return titles;
}

void UIAlertView::layOut(CGRect screen)
{
    double inset = 16;
    double textWidth = boxWidth - 2 * inset;
    double y = 19;
    for (auto* label : { m_titleLabel.get(), m_messageLabel.get() }) {
        if (label->text().empty()) {
            label->setFrame(CGRectMake(inset, y, textWidth, 0));
            continue;
        }
        CGSize size = label->sizeThatFits(CGSizeMake(textWidth, 0));
        label->setFrame(CGRectMake(inset, y, textWidth, size.height));
        y += size.height + 4;
    }
    y += 15;
    // Two buttons sit side by side, as iOS lays them out; others stack.
    bool sideBySide = m_buttons.size() == 2;
    for (size_t index = 0; index < m_buttons.size(); ++index) {
        double x = sideBySide ? index * boxWidth / 2 : 0;
        double width = sideBySide ? boxWidth / 2 : boxWidth;
        double top = sideBySide ? y : y + index * buttonHeight;
        if (sideBySide && index == 1)
            m_separators[index]->setFrame(CGRectMake(x, top, 0.5, buttonHeight));
        else
            m_separators[index]->setFrame(CGRectMake(0, top, boxWidth, 0.5));
        m_buttons[index]->setFrame(CGRectMake(x, top, width, buttonHeight));
    }
    double height = y + (sideBySide ? buttonHeight : buttonHeight * m_buttons.size());
    setFrame(CGRectMake(std::round((screen.size.width - boxWidth) / 2), std::round((screen.size.height - height) / 2), boxWidth, height));
}

void UIAlertView::show()
{
    if (m_window)
        return;
    CGRect screen = UIScreen::mainScreen()->bounds();
    m_window = make<UIWindow>(screen);
    m_window->setName("UIAlertWindow");
    m_window->setWindowLevel(UIWindowLevelAlert);
    m_window->setBackgroundColor(UIColor::colorWithWhite(0, 0.4));
    layOut(screen);
    m_window->addSubview(this);
    m_window->setHidden(false);
    shownAlerts().push_back(RefPtr<UIAlertView>(this));
    if (presentationObserver())
        presentationObserver()(*this);
}

void UIAlertView::buttonTapped(UIGestureRecognizer* recognizer)
{
    auto* view = recognizer ? recognizer->view() : nullptr;
    auto found = std::find_if(m_buttons.begin(), m_buttons.end(), [&](auto& button) { return button.get() == view; });
    if (found != m_buttons.end())
        dismissWithClickedButtonIndex(found - m_buttons.begin(), true);
}

void UIAlertView::dismissWithClickedButtonIndex(long index, bool)
{
    if (!m_window)
        return;
    RefPtr<UIAlertView> protect(this);
    m_window->setHidden(true);
    removeFromSuperview();
    m_window = nullptr;
    auto& alerts = shownAlerts();
    alerts.erase(std::remove_if(alerts.begin(), alerts.end(), [&](auto& alert) { return alert.get() == this; }), alerts.end());
    UIKitMessaging::tell(m_delegate.get(), OBJC_SEL("alertView:clickedButtonAtIndex:"), static_cast<NSObject*>(this), index);
}
