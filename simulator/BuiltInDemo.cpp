#include "BuiltInDemo.h"

namespace sim {

// The world every part starts from: a Saturday morning on an iPhone 6.
static constexpr std::string_view morningWorld = R"(now 2026-11-21T09:41:00
# The panel takes the whole top of the screen: the status bar fades out while it shows.
prefs shouldShowStatusBar no
battery level=0.76 ac=no
weather city="Lisbon" condition="Partly Cloudy" icon=partly-cloudy temp=17 high=21 low=12
weather-hour 1000 17 icon=partly-cloudy
weather-hour 1100 18 icon=sunny
weather-hour 1200 20 icon=sunny
weather-hour 1300 21 icon=sunny
weather-hour 1400 21 icon=partly-cloudy
weather-hour 1500 20 icon=cloudy
weather-hour 1600 19 icon=cloudy
weather-hour 1700 17 icon=rain
weather-day Today 21 12 icon=partly-cloudy
weather-day Sunday 19 11 icon=rain
weather-day Monday 16 10 icon=thunderstorm
weather-day Tuesday 15 9 icon=cloudy
weather-day Wednesday 17 10 icon=partly-cloudy
weather-day Thursday 20 12 icon=sunny
weather-day Friday 18 11 icon=wind
prefs vestrumHomeButtonCloseEnabled yes
prefs forecastHomeButtonCloseEnabled yes
prefs amperoHomeButtonCloseEnabled yes
alarm tomorrow 07:00
timer running 25m
calendar Work color=#ff9500
event "Design review" start=2026-11-21T11:00:00 end=2026-11-21T12:00:00 calendar=Work location="Studio 2" notes="Bring the printed boards."
event "Lunch with Anna" start=2026-11-21T13:00:00 end=2026-11-21T14:00:00 location="Cais do Sodré"
reminder "Pick up the book" due=2026-11-21T16:00:00
prefs calveraHomeButtonCloseEnabled yes
prefs notaraHomeButtonCloseEnabled yes
prefs dismissAllNotificationsButtonEnabled yes
notification com.apple.MobileSMS title="Anna" message="Lunch at one? I found a new place near the river." date=-12m
notification com.apple.MobileSMS title="Anna" message="Bring the book!" date=-3m
notification com.apple.mobilemail title="Rita Hale" subtitle="Photos from the trip" message="Here are the ones from Sunday." date=-40m
music artist="Nils Frahm" song="Says" album="Spaces" artwork=#2f6f8f playing=yes track=3/9
switcher com.apple.MobileSMS com.apple.mobilemail com.apple.Music com.apple.mobilesafari com.apple.weather com.apple.mobilecal
prefs melodraHomeButtonCloseEnabled yes
)";

static constexpr std::string_view lockScreenPart = R"(boot
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
tap KVTableViewSectionHeaderCell@0
advance 1s
shot event-overlay.png
home
advance 1s
notification com.apple.mobilemail title="Rita Hale" message="Dinner on Friday?" date=-20m image=yes actions=2
notification com.apple.mobilesafari title="Reading list" message="3 articles saved for later" date=-1h
notification com.apple.Music title="New music" message="A new album from Nils Frahm" date=-2h
event "Call with the printer" start=2026-11-21T15:30:00 end=2026-11-21T16:00:00 calendar=Work
advance 10s
shot schedule-table.png
scroll #tableView 0 -300
advance 1s
tap 187.5,316
advance 1s
shot notification-overlay.png
home
advance 1s
advance 1s
tap #_timeContainerView
advance 1s
shot clock-overlay.png
home
advance 1s
tap #_weatherContainerView
advance 1s
shot weather-overlay.png
home
advance 1s
tap #_amperoContainerView
advance 1s
shot battery-overlay.png
home
advance 1s
rotate landscape
advance 1s
tap #_timeContainerView
advance 1s
shot clock-overlay-landscape.png
home
advance 1s
tap #_weatherContainerView
advance 1s
shot weather-overlay-landscape.png
home
advance 1s
tap #_amperoContainerView
advance 1s
shot battery-overlay-landscape.png
home
advance 1s
rotate portrait
advance 1s
# Last, as its one button is the only way out: it clears every notification.
tap #notificationFooterView
advance 1s
shot clear-all-overlay.png
tap #_clearAllNotificationsButton
advance 1s
)";

// The panel can live in the notification centre or take the search page over;
// where it lives is read as the host starts, so each placement is a boot of its own.
static constexpr std::string_view notificationCentrePart = R"(prefs location 2
boot
advance 6s
nc show
advance 1s
shot notification-center.png
rotate landscape
advance 1s
shot notification-center-landscape.png
)";

static constexpr std::string_view searchPagePart = R"(prefs location 3
boot
advance 6s
search show right
advance 1s
shot search.png
)";

const std::vector<DemoPart>& builtInDemo()
{
    static const std::vector<DemoPart> parts {
        { "lock screen", std::string(morningWorld) + std::string(lockScreenPart) },
        { "notification centre", std::string(morningWorld) + std::string(notificationCentrePart) },
        { "search page", std::string(morningWorld) + std::string(searchPagePart) },
    };
    return parts;
}

}
