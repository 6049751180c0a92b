#include "KVClearAllNotificationsDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVClearAllNotificationsDisplayView", 42)

OBJC_IMPLEMENT_CLASS(KVClearAllNotificationsDisplayView, CVDisplayView)
{
    c.classMethod<&KVClearAllNotificationsDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVClearAllNotificationsDisplayView::show>("show");
    c.method<&KVClearAllNotificationsDisplayView::hide>("hide");
    c.method<&KVClearAllNotificationsDisplayView::updateFrame>("updateFrame");
}

KVClearAllNotificationsDisplayView* KVClearAllNotificationsDisplayView::sharedInstance() { return sharedOverlayInstance<KVClearAllNotificationsDisplayView>(); }

KVClearAllNotificationsDisplayView::KVClearAllNotificationsDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());
}

void KVClearAllNotificationsDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVClearAllNotificationsDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVClearAllNotificationsDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
}
