// Taps on the panel's sections, and closing overlays on the home button, a
// dark screen or a full-screen alert.

#include "KVView.h"

#include "KVAmpero/KVAmperoDisplayView.h"
#include "clock/KVTimeDisplayView.h"
#include "host/HookGroup.h"
#include "overlays/OverlayRegistry.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

#include <objc/SharedInstance.h>

static bool s_fullscreenAlertShowing;

bool KVView::fullscreenAlertShowing() { return s_fullscreenAlertShowing; }
void KVView::setFullscreenAlertShowing(bool showing) { s_fullscreenAlertShowing = showing; }

void KVView::timeContainerSingleTapRecognizer(UIGestureRecognizer*)
{
    if (!_settings->vestrumOverlayEnabled())
        return;
    if (!systemVersionAtLeast("9.0"))
        return;
    objc::send(objc::sharedInstance<KVTimeDisplayView>(), OBJC_SEL("show"));
}

void KVView::weatherContainerSingleTapRecognizer(UIGestureRecognizer*)
{
    if (_settings->forecastOverlayEnabled())
        objc::send(objc::sharedInstance<KVWeatherDisplayView>(), OBJC_SEL("show"));
}

void KVView::amperoContainerSingleTapRecognizer(UIGestureRecognizer*)
{
    if (_settings->amperoOverlayEnabled())
        objc::send(objc::sharedInstance<KVAmperoDisplayView>(), OBJC_SEL("show"));
}

bool KVView::hideAnyShowingDisplayViewsBecauseHomeButtonPressed(bool byHomeButton)
{
    bool closedAny = false;
    for (const OverlayEntry& overlay : closableOverlays()) {
        NSObject* instance = overlay.sharedInstance();
        if (!objc::send<bool>(instance, OBJC_SEL("isActive")))
            continue;
        if (byHomeButton && !overlay.homeButtonCloses(_settings.get()))
            continue;
        objc::send(instance, OBJC_SEL("hide"));
        closedAny = true;
    }
    return closedAny;
}
