#pragma once

#include "UIView.h"

// A window: the root of a view tree on the screen. (Completed with the
// screen's window list in this library's window files.)
class UIWindow : public UIView {
    OBJC_CLASS(UIWindow)
public:
    using UIView::UIView;
    UIWindow* window() const override { return const_cast<UIWindow*>(this); }
};
