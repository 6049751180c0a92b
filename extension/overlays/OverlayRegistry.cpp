#include "OverlayRegistry.h"

#include "KVAmpero/KVAmperoDisplayView.h"
#include "KVCalveraNotara/KVSingleEventDisplayView.h"
#include "KVCalveraNotara/KVSingleNotificationDisplayView.h"
#include "KVMelodra/KVMusicDisplayView.h"
#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

// Asked as a message, so that a replacement of the class method is seen.
template<typename Overlay>
static NSObject* overlay()
{
    return objc::send<NSObject*>(Overlay::classObject(), OBJC_SEL("sharedInstance"));
}

const std::vector<OverlayEntry>& closableOverlays()
{
    static const std::vector<OverlayEntry> overlays {
        { overlay<KVTimeDisplayView>, [](KVSettings* s) { return s->vestrumHomeButtonCloseEnabled(); } },
        { overlay<KVWeatherDisplayView>, [](KVSettings* s) { return s->forecastHomeButtonCloseEnabled(); } },
        { overlay<KVAmperoDisplayView>, [](KVSettings* s) { return s->amperoHomeButtonCloseEnabled(); } },
        { overlay<KVSingleEventDisplayView>, [](KVSettings* s) { return s->calveraHomeButtonCloseEnabled(); } },
        { overlay<KVSingleNotificationDisplayView>, [](KVSettings* s) { return s->notaraHomeButtonCloseEnabled(); } },
        { overlay<KVMusicDisplayView>, [](KVSettings* s) { return s->melodraHomeButtonCloseEnabled(); } },
    };
    return overlays;
}
