#include "KVSingleEventDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVCalveraNotara/KVSingleEventDisplayView", 44)

OBJC_IMPLEMENT_CLASS(KVSingleEventDisplayView, CVDisplayView)
{
    c.classMethod<&KVSingleEventDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVSingleEventDisplayView::show>("show");
    c.method<&KVSingleEventDisplayView::hide>("hide");
    c.method<&KVSingleEventDisplayView::updateFrame>("updateFrame");
    c.method<&KVSingleEventDisplayView::updateEventItem>("updateEventItem:");
    c.ivar<&KVSingleEventDisplayView::_eventItem>("_eventItem");
}

KVSingleEventDisplayView* KVSingleEventDisplayView::sharedInstance() { return sharedOverlayInstance<KVSingleEventDisplayView>(); }

KVSingleEventDisplayView::KVSingleEventDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());
}

void KVSingleEventDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::calveraResetLockScreenDim); }

void KVSingleEventDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::calveraResetLockScreenDim); }

void KVSingleEventDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
}

void KVSingleEventDisplayView::updateEventItem(NSObject* record) { _eventItem = StrongId(record); }
