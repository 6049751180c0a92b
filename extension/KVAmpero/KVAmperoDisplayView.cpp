#include "KVAmperoDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVAmpero/KVAmperoDisplayView", 41)

OBJC_IMPLEMENT_CLASS(KVAmperoDisplayView, CVDisplayView)
{
    c.classMethod<&KVAmperoDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVAmperoDisplayView::show>("show");
    c.method<&KVAmperoDisplayView::hide>("hide");
    c.method<&KVAmperoDisplayView::updateFrame>("updateFrame");
}

KVAmperoDisplayView* KVAmperoDisplayView::sharedInstance()
{
    static KVAmperoDisplayView* shared = make<KVAmperoDisplayView>().leakRef();
    return shared;
}

KVAmperoDisplayView::KVAmperoDisplayView()
{
    setName("KVAmperoDisplayView");
    setHidden(true);
    addSubview(displayContainerView());
    if (auto* window = objc::cast<UIView>(s_rootWindow))
        window->addSubview(this);
    _settings = KVSettings::sharedInstance();

    _blurEffectView = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2));
    _blurEffectView->setName("_blurEffectView");
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    _blurEffectView->setUserInteractionEnabled(false);
    displayContainerView()->addSubview(_blurEffectView.get());
}

void KVAmperoDisplayView::show()
{
    updateFrame();
    RefPtr<KVAmperoDisplayView> protect(this);
    showWithCompletion([protect] {
        if (protect->_settings->amperoResetLockScreenDim())
            resetLockScreenIdleTimer();
    });
}

void KVAmperoDisplayView::hide()
{
    RefPtr<KVAmperoDisplayView> protect(this);
    hideWithCompletion([protect] {
        protect->setHidden(true);
        if (protect->_settings->amperoResetLockScreenDim())
            resetLockScreenIdleTimer();
    });
}

void KVAmperoDisplayView::updateFrame()
{
    updateFrameForActiveOrientation();
    displayContainerView()->setFrame(bounds());
    _blurEffectView->setFrame(displayContainerView()->bounds());
}
