#include "KVWeatherDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIVisualEffectView.h>

OBJC_IMPLEMENT_CLASS(KVWeatherDisplayView, CVContainerView)
{
    c.classMethod<&KVWeatherDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVWeatherDisplayView::updateFrame>("updateFrame");
}

KVWeatherDisplayView* KVWeatherDisplayView::sharedInstance()
{
    static KVWeatherDisplayView* shared = make<KVWeatherDisplayView>().leakRef();
    return shared;
}

KVWeatherDisplayView::KVWeatherDisplayView()
{
    setName("KVWeatherDisplayView");
    setHidden(true);
    _settings = KVSettings::sharedInstance();
    _blurEffectView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
    _blurEffectView->setName("_blurEffectView");
    _blurEffectView->setFrame(bounds());
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    _blurEffectView->setUserInteractionEnabled(false);
    addSubview(_blurEffectView.get());
}

void KVWeatherDisplayView::show()
{
    CVContainerView::show();
    objc::send(containerWindow(), OBJC_SEL("enableTapToTerminate"));
}

void KVWeatherDisplayView::viewWillShow()
{
    CVContainerView::viewWillShow();
    updateFrame();
    if (_settings->forecastResetLockScreenDim())
        resetLockScreenIdleTimer();
}

void KVWeatherDisplayView::viewWillHide()
{
    CVContainerView::viewWillHide();
    if (_settings->forecastResetLockScreenDim())
        resetLockScreenIdleTimer();
}

void KVWeatherDisplayView::updateFrame() { _blurEffectView->setFrame(bounds()); }
