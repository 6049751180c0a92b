#pragma once

#include <UIKit/UINavigationController.h>

// The navigation controller around Spotlight's search interface; its bar
// holds the search field.
class SPUINavigationController final : public UINavigationController {
    OBJC_CLASS(SPUINavigationController)
public:
    StrongId initWithRootViewController(UIViewController*);
    void loadView() override;
};
