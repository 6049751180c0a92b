#include "OverlayRegistry.h"

#include "KVAmpero/KVAmperoDisplayView.h"
#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

const std::vector<OverlayEntry>& closableOverlays()
{
    static const std::vector<OverlayEntry> overlays {
        { [] { return static_cast<NSObject*>(KVTimeDisplayView::sharedInstance()); }, [](KVSettings* s) { return s->vestrumHomeButtonCloseEnabled(); } },
        { [] { return static_cast<NSObject*>(KVWeatherDisplayView::sharedInstance()); }, [](KVSettings* s) { return s->forecastHomeButtonCloseEnabled(); } },
        { [] { return static_cast<NSObject*>(KVAmperoDisplayView::sharedInstance()); }, [](KVSettings* s) { return s->amperoHomeButtonCloseEnabled(); } },
    };
    return overlays;
}
