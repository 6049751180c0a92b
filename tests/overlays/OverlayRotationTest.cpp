// An overlay turned while open looks exactly as it does when opened in the
// new orientation: the dumps of its whole view tree are the same.

#include "KVAmpero/KVAmperoDisplayView.h"
#include "KVCalveraNotara/KVClearAllNotificationsDisplayView.h"
#include "KVCalveraNotara/KVSingleEventDisplayView.h"
#include "KVCalveraNotara/KVSingleNotificationDisplayView.h"
#include "KVMelodra/KVMusicDisplayView.h"
#include "clock/KVTimeDisplayView.h"
#include "settings/KVSettings.h"
#include "weather/KVWeatherDisplayView.h"

#include <Foundation/NSRunLoop.h>
#include <UIKit/UIApplication.h>
#include <host/SimulatedHost.h>
#include <host/Weather/City.h>
#include <host/Weather/DayForecast.h>
#include <host/Weather/HourlyForecast.h>
#include <host/Weather/WeatherPreferences.h>

#include "support/FixedPreferences.h"

#include <ViewTree.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>

namespace {

class OverlayRotation : public testing::Test {
protected:
    void SetUp() override
    {
        KVSettings::sharedInstance()->setPrefs(make<FixedPreferences>());
        auto weather = WeatherPreferences::sharedPreferences();
        City& city = weather->city();
        city.setName("Lisbon");
        city.setConditionName("Partly Cloudy");
        city.setTemperatureCelsius(18);
        for (int hour = 9; hour < 21; ++hour)
            city.addHourlyForecast(make<HourlyForecast>((hour < 10 ? "0" : "") + std::to_string(hour) + "00", hour + 5, "sunny"));
        for (const char* day : { "Today", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday" })
            city.addDayForecast(make<DayForecast>(day, 21, 12, "partly-cloudy"));
        weather->setForecastAvailable(true);
        m_host = std::make_unique<SimulatedHost>();
        m_host->boot();
        SBMediaController::NowPlaying nowPlaying;
        nowPlaying.artist = "Nils Frahm";
        nowPlaying.song = "Says";
        nowPlaying.album = "Spaces";
        nowPlaying.artworkColor = "#2f6f8f";
        m_host->setNowPlaying(nowPlaying, true);
        advance(1);
    }
    void TearDown() override { m_host.reset(); }

    static void advance(double seconds) { NSRunLoop::mainRunLoop()->advance(seconds); }

    // The overlay's tree opened in `orientation`, and opened in the other one
    // and then turned to it.
    std::pair<nlohmann::json, nlohmann::json> openedAndTurned(UIView* overlay, int orientation, int other)
    {
        m_host->rotate(orientation);
        objc::send(overlay, OBJC_SEL("show"));
        advance(1);
        auto opened = sim::ViewTree::dumpView(*overlay);
        objc::send(overlay, OBJC_SEL("hide"));
        advance(1);

        m_host->rotate(other);
        objc::send(overlay, OBJC_SEL("show"));
        advance(1);
        m_host->rotate(orientation);
        advance(1);
        auto turned = sim::ViewTree::dumpView(*overlay);
        objc::send(overlay, OBJC_SEL("hide"));
        advance(1);
        return { opened, turned };
    }

    std::unique_ptr<SimulatedHost> m_host;
};

} // namespace

TEST_F(OverlayRotation, EveryOverlayTurnedWhileOpenLooksAsIfOpenedThatWay)
{
    std::vector<UIView*> overlays = {
        KVTimeDisplayView::sharedInstance(),
        KVWeatherDisplayView::sharedInstance(),
        KVAmperoDisplayView::sharedInstance(),
        KVClearAllNotificationsDisplayView::sharedInstance(),
        KVSingleEventDisplayView::sharedInstance(),
        KVSingleNotificationDisplayView::sharedInstance(),
        KVMusicDisplayView::sharedInstance(),
    };
    for (UIView* overlay : overlays) {
        SCOPED_TRACE(overlay->className());
        for (auto [orientation, other] : { std::pair { UIInterfaceOrientationLandscapeLeft, UIInterfaceOrientationPortrait },
                 std::pair { UIInterfaceOrientationPortrait, UIInterfaceOrientationLandscapeLeft } }) {
            auto [opened, turned] = openedAndTurned(overlay, orientation, other);
            // What differs, as a JSON patch from the opened tree to the turned one.
            EXPECT_EQ(nlohmann::json::diff(opened, turned), nlohmann::json::array()) << "turned to orientation " << orientation;
        }
    }
}
