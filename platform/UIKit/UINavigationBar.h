#pragma once

#include "UIView.h"

// The bar at the top of a navigation controller's view. It holds no items
// here: it is a 44-point strip that other code can find, hide and add to.
class UINavigationBar : public UIView {
    OBJC_CLASS(UINavigationBar)
public:
    using UIView::UIView;
    static constexpr double height = 44;
};
