#pragma once

#include <UIKit/UIImageView.h>

class CVAppItem;

// One icon of the app launcher: shows the app's icon and remembers the app
// that a tap on it opens.
class KVAppLauncherAppIconImageView final : public UIImageView {
    OBJC_CLASS(KVAppLauncherAppIconImageView)
public:
    KVAppLauncherAppIconImageView() = default;
    explicit KVAppLauncherAppIconImageView(CVAppItem*);
    // `initWithAppItem:`.
    static RefPtr<KVAppLauncherAppIconImageView> initWithAppItem(CVAppItem* app) { return make<KVAppLauncherAppIconImageView>(app); }

    CVAppItem* app() const { return _app.get(); }
    void setApp(CVAppItem*);

    RefPtr<CVAppItem> _app;
};
