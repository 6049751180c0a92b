#include "KVSingleNotificationDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVSingleNotificationDisplayView", 46)

OBJC_IMPLEMENT_CLASS(KVSingleNotificationDisplayView, CVDisplayView)
{
    c.classMethod<&KVSingleNotificationDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVSingleNotificationDisplayView::show>("show");
    c.method<&KVSingleNotificationDisplayView::hide>("hide");
    c.method<&KVSingleNotificationDisplayView::updateFrame>("updateFrame");
    c.method<&KVSingleNotificationDisplayView::updateRow>("updateRow:");
    c.ivar<&KVSingleNotificationDisplayView::_row>("_row");
}

KVSingleNotificationDisplayView* KVSingleNotificationDisplayView::sharedInstance() { return sharedOverlayInstance<KVSingleNotificationDisplayView>(); }

KVSingleNotificationDisplayView::KVSingleNotificationDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());
}

void KVSingleNotificationDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVSingleNotificationDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::notaraResetLockScreenDim); }

void KVSingleNotificationDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
}

void KVSingleNotificationDisplayView::updateRow(NSObject* record) { _row = StrongId(record); }
