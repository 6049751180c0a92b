#include "KVOverlaySupport.h"

#include "host/HookGroup.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVContainerView.h>
#include <CorvLib/CVDisplayView.h>
#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIVisualEffectView.h>

void resetLockScreenIdleTimer()
{
    // Looked up once: the class does not come and go.
    static objc::Class* backlightClass = objc::objc_getClass("SBBacklightController");
    StrongId controller = objc::send<StrongId>(backlightClass, OBJC_SEL("sharedInstance"));
    objc::send(controller, OBJC_SEL("resetLockScreenIdleTimer"));
}

void resetLockScreenIdleTimerIfAsked(KVSettings* settings, KVDimSetting resetsDim)
{
    if ((settings->*resetsDim)())
        resetLockScreenIdleTimer();
}

void attachDisplayOverlay(CVDisplayView* overlay, NSObject* rootWindow)
{
    overlay->setName(overlay->className());
    overlay->setHidden(true);
    overlay->addSubview(overlay->displayContainerView());
    if (auto* window = objc::cast<UIView>(rootWindow))
        window->addSubview(overlay);
}

void showDisplayOverlay(CVDisplayView* overlay, KVSettings* settings, KVDimSetting resetsDim)
{
    objc::send(overlay, OBJC_SEL("updateFrame"));
    overlay->showWithCompletion([protect = RefPtr<CVDisplayView>(overlay), settings = RefPtr<KVSettings>(settings), resetsDim] {
        resetLockScreenIdleTimerIfAsked(settings.get(), resetsDim);
    });
}

void hideDisplayOverlay(CVDisplayView* overlay, KVSettings* settings, KVDimSetting resetsDim)
{
    overlay->hideWithCompletion([protect = RefPtr<CVDisplayView>(overlay), settings = RefPtr<KVSettings>(settings), resetsDim] {
        protect->setHidden(true);
        resetLockScreenIdleTimerIfAsked(settings.get(), resetsDim);
    });
}

void showContainerOverlay(CVContainerView* overlay)
{
    overlay->CVContainerView::show();
    objc::send(overlay->containerWindow(), OBJC_SEL("enableTapToTerminate"));
}

void containerOverlayWillShow(CVContainerView* overlay, KVSettings* settings, KVDimSetting resetsDim)
{
    objc::send(overlay, OBJC_SEL("updateFrame"));
    resetLockScreenIdleTimerIfAsked(settings, resetsDim);
}

void layOutDisplayOverlay(CVDisplayView* overlay, UIView* blur)
{
    overlay->updateFrameForActiveOrientation();
    overlay->displayContainerView()->setFrame(overlay->bounds());
    if (blur)
        blur->setFrame(overlay->displayContainerView()->bounds());
}

void maskAsAppIcon(UIView* icon)
{
    static constexpr double cornerToSide = 0.2237;
    icon->layer().setCornerRadius(cornerToSide * icon->bounds().size.width);
    icon->setClipsToBounds(true);
}

RefPtr<UIVisualEffectView> addDarkBlur(UIView* container)
{
    auto blur = make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(UIBlurEffectStyleDark));
    blur->setName("_blurEffectView");
    blur->setFrame(container->bounds());
    blur->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    // The blur is backdrop only: taps go to the overlay's controls above it.
    blur->setUserInteractionEnabled(false);
    container->addSubview(blur.get());
    return blur;
}

void installRootWindowCapture(const char* sourceUnit, int line, objc::IMP* original, StrongId*,
    StrongId (*replacement)(NSObject*, objc::SEL, NSObject*))
{
    installHookGroup(sourceUnit, line, { { "FBRootWindow", { hook("initWithDisplay:", replacement, original) } } });
}
