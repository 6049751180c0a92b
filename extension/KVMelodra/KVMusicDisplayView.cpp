#include "KVMusicDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVMelodra/KVMusicDisplayView", 48)

OBJC_IMPLEMENT_CLASS(KVMusicDisplayView, CVDisplayView)
{
    c.classMethod<&KVMusicDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVMusicDisplayView::show>("show");
    c.method<&KVMusicDisplayView::hide>("hide");
    c.method<&KVMusicDisplayView::updateFrame>("updateFrame");
}

KVMusicDisplayView* KVMusicDisplayView::sharedInstance() { return sharedOverlayInstance<KVMusicDisplayView>(); }

KVMusicDisplayView::KVMusicDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());
}

void KVMusicDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::melodraResetLockScreenDim); }

void KVMusicDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::melodraResetLockScreenDim); }

void KVMusicDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
}
