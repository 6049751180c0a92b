#include "KVAppLauncherAppIconImageView.h"

#include <CorvLib/CVAppItem.h>

OBJC_IMPLEMENT_CLASS(KVAppLauncherAppIconImageView, UIImageView)
{
    c.method<&KVAppLauncherAppIconImageView::app>("app");
    c.method<&KVAppLauncherAppIconImageView::setApp>("setApp:");
    c.ivar<&KVAppLauncherAppIconImageView::_app>("_app");
}

KVAppLauncherAppIconImageView::KVAppLauncherAppIconImageView(CVAppItem* app)
{
    setApp(app);
    setUserInteractionEnabled(true);
}

void KVAppLauncherAppIconImageView::setApp(CVAppItem* app)
{
    _app = app;
    setImage(app && app->iconImageView() ? app->iconImageView()->image() : nullptr);
}
