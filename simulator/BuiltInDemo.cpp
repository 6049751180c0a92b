#include "BuiltInDemo.h"

namespace sim {

std::string_view builtInDemoScenario()
{
    return R"(# A Saturday morning on an iPhone 6.
now 2026-11-21T09:41:00
battery level=0.76 ac=no
alarm tomorrow 07:00
timer running 25m
notification com.apple.MobileSMS title="Anna" message="Lunch at one? I found a new place near the river." date=-12m
notification com.apple.MobileSMS title="Anna" message="Bring the book!" date=-3m
notification com.apple.mobilemail title="Rita Hale" subtitle="Photos from the trip" message="Here are the ones from Sunday." date=-40m
music artist="Nils Frahm" song="Says" album="Spaces" artwork=#2f6f8f playing=yes track=3/9
switcher com.apple.MobileSMS com.apple.mobilemail com.apple.Music com.apple.mobilesafari com.apple.weather com.apple.mobilecal
prefs melodraHomeButtonCloseEnabled yes
boot
advance 6s
shot lockscreen.png
dump lockscreen.json
rotate landscape
advance 1s
shot lockscreen-landscape.png
tap #_melodraView
advance 1s
shot music-overlay-landscape.png
rotate portrait
advance 1s
shot music-overlay.png
home
advance 1s
rotate landscape
advance 1s
rotate portrait
advance 1s
nc show
advance 1s
shot notification-center.png
nc hide
search show right
advance 1s
shot search.png
search hide
)";
}

}
