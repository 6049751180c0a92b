#pragma once

#include <UIKit/UIView.h>

#include <vector>

class CVAppItem;
class KVSettings;
class UIGestureRecognizer;
class UIScrollView;

// The strip of app icons at the bottom of the panel: the apps of the user's
// list or those of the app switcher, in a row that scrolls sideways. A tap
// on an icon opens its app. Every `update` builds the row anew.
class KVAppLauncherView final : public UIView {
    OBJC_CLASS(KVAppLauncherView)
public:
    KVAppLauncherView();

    // The most icons a row holds: a list naming thousands of apps still
    // builds in well under a frame.
    static constexpr size_t maximumIcons = 256;

    // Places the strip along the bottom of a panel of the given frame.
    void changeFrame(CGRect panelFrame);
    void update();
    void appIconSingleTapRecognizer(UIGestureRecognizer*);

    // The apps the row shows, chosen as the settings say, at most
    // maximumIcons.
    std::vector<RefPtr<CVAppItem>> chosenApps() const;

    RefPtr<KVSettings> _settings;
    // The row, made anew by every update.
    RefPtr<UIScrollView> _scrollView;
};
