#pragma once

#include <objc/objc.h>

#include <functional>

// The alpha of SpringBoard's status bar, as apps and the lock screen set it.
class SBAppStatusBarManager final : public NSObject {
    OBJC_CLASS(SBAppStatusBarManager)
public:
    static RefPtr<SBAppStatusBarManager> sharedInstance();

    double statusBarAlpha() const { return m_alpha; }
    void setStatusBarAlpha(double);

    // Told after every change (the status bar window follows it).
    void setStatusBarAlphaDidChangeHandler(std::function<void()> handler) { m_didChange = std::move(handler); }

private:
    double m_alpha { 1 };
    std::function<void()> m_didChange;
};
