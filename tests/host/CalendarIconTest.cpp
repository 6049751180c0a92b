// The Calendar app's icon shows today, as on the phone, and is made again
// only when the day or the language changes.

#include "HostTestSupport.h"

#include <Foundation/NSLocale.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIWindow.h>
#include <host/FrontBoard/FBRootWindow.h>
#include <host/SpringBoard/SBApplicationIcon.h>

namespace {

class CalendarIcon : public HostTest {
protected:
    static RefPtr<UIImage> icon()
    {
        const HostWorld::App* calendar = HostWorld::shared().appWithIdentifier("com.apple.mobilecal");
        return calendar ? SBApplicationIcon::iconImageForApp(*calendar, UIScreen::mainScreen()->scale()) : nullptr;
    }
    // Whether two icons differ anywhere in their middle, where the date is.
    static bool differ(const UIImage& a, const UIImage& b)
    {
        for (int y = a.pixelHeight() / 8; y < a.pixelHeight() * 7 / 8; ++y) {
            for (int x = a.pixelWidth() / 8; x < a.pixelWidth() * 7 / 8; ++x) {
                if (!(a.pixelAt(x, y) == b.pixelAt(x, y)))
                    return true;
            }
        }
        return false;
    }
};

} // namespace

TEST_F(CalendarIcon, ShowsTodayAndIsMadeAgainOnlyWhenTheDayOrTheLanguageChanges)
{
    auto saturday = icon();
    ASSERT_TRUE(saturday);
    EXPECT_EQ(saturday->name(), "icon:com.apple.mobilecal");
    setClock("2026-11-21T23:59:00");
    EXPECT_EQ(icon(), saturday) << "the same day keeps the icon made";

    setClock("2026-11-22T00:00:30");
    auto sunday = icon();
    ASSERT_TRUE(sunday);
    EXPECT_NE(sunday, saturday);
    EXPECT_TRUE(differ(*saturday, *sunday));

    // The weekday is written in the device's language.
    ASSERT_TRUE(NSLocale::setCurrentLocaleIdentifier("fr_FR"));
    auto dimanche = icon();
    EXPECT_NE(dimanche, sunday);
    EXPECT_TRUE(differ(*sunday, *dimanche));
    NSLocale::setCurrentLocaleIdentifier("en_US");
}

// The picture in the Calendar's icon cell somewhere under a view.
static UIImage* calendarCellIcon(UIView* view)
{
    if (view->name() == "com.apple.mobilecal")
        return objc::cast<UIImageView>(view->subviews().front().get())->image();
    for (auto& subview : view->subviews()) {
        if (UIImage* found = calendarCellIcon(subview.get()))
            return found;
    }
    return nullptr;
}

TEST_F(CalendarIcon, OnTheHomeScreenTurnsOverAtMidnight)
{
    host().unlock();
    auto homeIcon = [this] { return calendarCellIcon(host().rootWindow()); };
    setClock("2026-11-21T23:59:30");
    host().clockDidChange();
    auto saturday = icon();
    EXPECT_EQ(homeIcon(), saturday.get());
    advance(60);
    auto sunday = icon();
    EXPECT_NE(sunday, saturday);
    EXPECT_EQ(homeIcon(), sunday.get());
}

TEST_F(CalendarIcon, AmongTheSearchPagesSuggestionsIsTodaysWhenThePageShowsAgain)
{
    ASSERT_TRUE(host().showSearch(8));
    auto saturday = icon();
    host().hideSearch();
    setClock("2026-11-22T08:00:00");
    host().clockDidChange();
    ASSERT_TRUE(host().showSearch(8));
    UIImage* shown = nullptr;
    for (auto* window : UIWindow::allWindows()) {
        if (window->name() == "searchWindow")
            shown = calendarCellIcon(window);
    }
    EXPECT_NE(shown, saturday.get());
    EXPECT_EQ(shown, icon().get());
}
