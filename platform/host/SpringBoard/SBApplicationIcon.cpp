#include "SBApplicationIcon.h"

#include "SBApplication.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSDateFormatter.h>
#include <Foundation/NSLocale.h>
#include <UIKit/RenderContext.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIScreen.h>

#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <map>

OBJC_IMPLEMENT_CLASS(SBApplicationIcon, NSObject)
{
    c.allocatable();
    c.method<&SBApplicationIcon::initWithApplication>("initWithApplication:");
    c.method<&SBApplicationIcon::getIconImage>("getIconImage:");
}

static std::string& artDirectory()
{
    static auto* directory = new std::string();
    return *directory;
}

void SBApplicationIcon::setArtDirectory(std::string directory) { artDirectory() = std::move(directory); }

StrongId SBApplicationIcon::initWithApplication(NSObject* application)
{
    auto* app = dynamic_cast<SBApplication*>(application);
    if (!app)
        return nullptr;
    m_bundleIdentifier = app->bundleIdentifier();
    return StrongId(this);
}

RefPtr<UIImage> SBApplicationIcon::getIconImage(long long) const
{
    auto* app = HostWorld::shared().appWithIdentifier(m_bundleIdentifier);
    if (!app)
        return nullptr;
    return iconImageForApp(*app, UIScreen::mainScreen()->scale());
}

static RefPtr<UIColor> colorFromHex(const std::string& hex)
{
    unsigned value = 0x8e8e93;
    if (hex.size() == 7 && hex[0] == '#')
        value = static_cast<unsigned>(std::strtoul(hex.c_str() + 1, nullptr, 16));
    return UIColor::colorWithRed(((value >> 16) & 0xff) / 255.0, ((value >> 8) & 0xff) / 255.0, (value & 0xff) / 255.0, 1);
}

// A rounded square of the app's colour with the name's initial, in black on
// light colours so that it stays readable.
static RefPtr<UIImage> drawnIcon(const HostWorld::App& app, double scale)
{
    auto color = colorFromHex(app.color);
    auto square = UIImage::imageWithSize({ SBApplicationIcon::iconSize, SBApplicationIcon::iconSize }, scale, [&](cairo_t* cr) {
        addRoundedRectangle(cr, CGRectMake(0, 0, SBApplicationIcon::iconSize, SBApplicationIcon::iconSize), SBApplicationIcon::iconSize * SBApplicationIcon::cornerRadiusRatio);
        cairo_set_source_rgb(cr, color->red(), color->green(), color->blue());
        cairo_fill(cr);
    }, "icon:" + app.bundleIdentifier);
    if (app.name.empty())
        return square;
    auto view = UIImageView::create(CGRectMake(0, 0, SBApplicationIcon::iconSize, SBApplicationIcon::iconSize));
    view->setImage(square);
    auto initial = UILabel::create(view->bounds());
    // The first character, whole: a name may start with a multi-byte letter.
    size_t length = 1;
    while (length < app.name.size() && (static_cast<unsigned char>(app.name[length]) & 0xc0) == 0x80)
        ++length;
    initial->setText(app.name.substr(0, length));
    initial->setFont(UIFont::systemFontOfSize(30));
    double luminance = 0.299 * color->red() + 0.587 * color->green() + 0.114 * color->blue();
    initial->setTextColor(luminance > 0.75 ? UIColor::colorWithRed(0.2, 0.2, 0.2, 1) : UIColor::whiteColor());
    initial->setTextAlignment(NSTextAlignmentCenter);
    view->addSubview(initial.get());
    auto image = UIRenderer::renderView(*view, scale);
    if (image)
        image->setName("icon:" + app.bundleIdentifier);
    return image ? image : square;
}

// The picture cut to the icon mask, keeping its size and pixels.
static RefPtr<UIImage> maskedIcon(const UIImage& picture, const std::string& name)
{
    CGSize size = picture.size();
    return UIImage::imageWithSize(size, picture.scale(), [&](cairo_t* cr) {
        CGRect rect = CGRectMake(0, 0, size.width, size.height);
        addRoundedRectangle(cr, rect, std::min(size.width, size.height) * SBApplicationIcon::cornerRadiusRatio);
        cairo_clip(cr);
        picture.drawInRect(cr, rect);
    }, name);
}

// The Calendar app's icon is live, as on the phone: today's weekday over the
// day of the month, in the device's language and time zone, drawn on the
// app's page (its art, or a white square without one).
static constexpr const char* calendarIdentifier = "com.apple.mobilecal";

static std::string todayFormatted(const char* pattern)
{
    auto formatter = NSDateFormatter::create();
    formatter->setDateFormat(pattern);
    return formatter->stringFromDate(NSDate::date().get());
}

// What the calendar icon shows depends on: the day and the language.
static std::string calendarFace() { return todayFormatted("yyyy-MM-dd") + " " + NSLocale::currentLocaleIdentifier(); }

static RefPtr<UIImage> calendarIcon(RefPtr<UIImage> page, double scale)
{
    constexpr double side = SBApplicationIcon::iconSize;
    if (!page) {
        page = UIImage::imageWithSize({ side, side }, scale, [&](cairo_t* cr) {
            addRoundedRectangle(cr, CGRectMake(0, 0, side, side), side * SBApplicationIcon::cornerRadiusRatio);
            cairo_set_source_rgb(cr, 1, 1, 1);
            cairo_fill(cr);
        }, "");
    }
    auto view = UIImageView::create(CGRectMake(0, 0, side, side));
    view->setImage(page);
    auto weekday = UILabel::create(CGRectMake(4, 5, side - 8, 13));
    weekday->setText(todayFormatted("EEEE"));
    weekday->setFont(UIFont::fontWithName("HelveticaNeue-Medium", 8.5));
    weekday->setAdjustsFontSizeToFitWidth(true);
    weekday->setTextColor(UIColor::colorWithRed(1, 0.231, 0.188, 1));
    weekday->setTextAlignment(NSTextAlignmentCenter);
    view->addSubview(weekday.get());
    auto day = UILabel::create(CGRectMake(0, 15, side, 42));
    day->setText(todayFormatted("d"));
    day->setFont(UIFont::fontWithName("HelveticaNeue-UltraLight", 33));
    day->setTextColor(UIColor::colorWithRed(0.067, 0.067, 0.067, 1));
    day->setTextAlignment(NSTextAlignmentCenter);
    view->addSubview(day.get());
    auto image = UIRenderer::renderView(*view, scale);
    if (image)
        image->setName(std::string("icon:") + calendarIdentifier);
    return image ? image : page;
}

// SpringBoard keeps the icons it made: the lock screen and the extension ask
// for an app's icon at every reload. An icon stands while what it was made
// from is unchanged: the same decoded art file (a rewritten file decodes to a
// new image), or the same colour, name and scale for a drawn one; the
// calendar's also while the day and the language are the same.
namespace {

struct MadeIcon {
    RefPtr<UIImage> picture;
    std::string color;
    std::string name;
    double scale { 0 };
    std::string face;
    RefPtr<UIImage> icon;
};

constexpr size_t madeIconLimit = 256;

std::map<std::string, MadeIcon>& madeIcons()
{
    static auto* icons = new std::map<std::string, MadeIcon>();
    return *icons;
}

} // namespace

RefPtr<UIImage> SBApplicationIcon::iconImageForApp(const HostWorld::App& app, double scale)
{
    RefPtr<UIImage> picture;
    if (!artDirectory().empty())
        picture = UIImage::imageWithContentsOfFile(artDirectory() + "/icons/" + app.bundleIdentifier + ".png");
    bool isCalendar = app.bundleIdentifier == calendarIdentifier;
    std::string face = isCalendar ? calendarFace() : std::string();
    auto& icons = madeIcons();
    if (auto made = icons.find(app.bundleIdentifier); made != icons.end()) {
        const MadeIcon& entry = made->second;
        if (entry.picture == picture && entry.face == face && (picture || (entry.color == app.color && entry.name == app.name && entry.scale == scale)))
            return entry.icon;
    }
    RefPtr<UIImage> icon = picture ? maskedIcon(*picture, "icon:" + app.bundleIdentifier) : nullptr;
    if (!icon)
        picture = nullptr;
    if (isCalendar)
        icon = calendarIcon(icon, scale);
    else if (!icon)
        icon = drawnIcon(app, scale);
    if (icons.size() >= madeIconLimit && !icons.contains(app.bundleIdentifier))
        icons.erase(icons.begin());
    icons[app.bundleIdentifier] = { picture, app.color, app.name, scale, face, icon };
    return icon;
}
