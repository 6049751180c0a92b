#include "KVView.h"

#include "KVMelodra/KVMelodraView.h"
#include "clock/KVTimeDisplayView.h"
#include "host/HookGroup.h"
#include "launcher/KVAppLauncherView.h"
#include "schedule/KVTableViewController.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVImageFactory.h>
#include <CorvLib/CVMusicProvider.h>
#include <Foundation/NSBundle.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimer.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIBlurEffect.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIScreen.h>
#include <UIKit/UIScrollView.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <UIKit/UIVisualEffectView.h>

#include <algorithm>

static constexpr const char* kavelinBundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";

OBJC_IMPLEMENT_CLASS(KVView, UIView)
{
    c.classMethod<&KVView::sharedInstance>("sharedInstance");
    c.method<&KVView::changeFrame>("changeFrame:");
    c.method<&KVView::updateViewVisibilites>("updateViewVisibilites");
    c.method<&KVView::update>("update");
    c.method<&KVView::updateLabels>("updateLabels");
    c.method<&KVView::visibilityHandlerAndTimeUpdateTimer>("visibilityHandlerAndTimeUpdateTimer:");
    c.method<&KVView::frameUpdateTimer>("frameUpdateTimer:");
    c.method<&KVView::weatherUpdateTimer>("weatherUpdateTimer:");
    c.method<&KVView::scheduleAndNotificationsUpdateTimer>("scheduleAndNotificationsUpdateTimer:");
    c.method<&KVView::updateTimeDatelabels>("updateTimeDatelabels");
    c.method<&KVView::updateAlarmTimerLabel>("updateAlarmTimerLabel");
    c.method<&KVView::updateForecastLabels>("updateForecastLabels");
    c.method<&KVView::alarmTimerLabelSingleTapRecognizer>("alarmTimerLabelSingleTapRecognizer:");
    c.method<&KVView::alarmTimerLabelLongPressRecognizer>("alarmTimerLabelLongPressRecognizer:");
    c.method<&KVView::timeContainerSingleTapRecognizer>("timeContainerSingleTapRecognizer:");
    c.method<&KVView::weatherContainerSingleTapRecognizer>("weatherContainerSingleTapRecognizer:");
    c.method<&KVView::amperoContainerSingleTapRecognizer>("amperoContainerSingleTapRecognizer:");
    c.method<&KVView::hideAnyShowingDisplayViewsBecauseHomeButtonPressed>("hideAnyShowingDisplayViewsBecauseHomeButtonPressed:");
    c.method<&KVView::isAnAlarmActive>("isAnAlarmActive");
    c.method<&KVView::setIsAnAlarmActive>("setIsAnAlarmActive:");
    c.method<&KVView::nextAlarmFireTime>("nextAlarmFireTime");
    c.method<&KVView::setNextAlarmFireTime>("setNextAlarmFireTime:");
    c.method<&KVView::timerState>("timerState");
    c.method<&KVView::setTimerState>("setTimerState:");
    c.method<&KVView::timerTimeRemaining>("timerTimeRemaining");
    c.method<&KVView::setTimerTimeRemaining>("setTimerTimeRemaining:");
    c.method<&KVView::updateAmperoSummary>("updateAmperoSummary");
    c.method<&KVView::timeFromNSDate>("timeFromNSDate:");
    c.method<&KVView::dateFromNSDate>("dateFromNSDate:");
    c.method<&KVView::tableViewController>("tableViewController");
    c.method<&KVView::appLauncherView>("appLauncherView");
    c.method<&KVView::melodraView>("melodraView");
    c.method<&KVView::addBackground>("addBackground");
    c.method<&KVView::addVestrum>("addVestrum");
    c.method<&KVView::addForecast>("addForecast");
    c.method<&KVView::addAmpero>("addAmpero");
    c.method<&KVView::addCalveraNotaraTableView>("addCalveraNotaraTableView");
    c.method<&KVView::addLancera>("addLancera");
    c.method<&KVView::addMelodraView>("addMelodraView");
    c.method<&KVView::width>("width");
    c.method<&KVView::height>("height");
    c.ivar<&KVView::_wallpaperImageView>("_wallpaperImageView");
    c.ivar<&KVView::_blurEffectView>("_blurEffectView");
    c.ivar<&KVView::_timeContainerView>("_timeContainerView");
    c.ivar<&KVView::_timeDateLabel>("_timeDateLabel");
    c.ivar<&KVView::_alarmTimerLabel>("_alarmTimerLabel");
    c.ivar<&KVView::_weatherContainerView>("_weatherContainerView");
    c.ivar<&KVView::_amperoContainerView>("_amperoContainerView");
    c.ivar<&KVView::_tableViewController>("_tableViewController");
    c.ivar<&KVView::_appLauncherView>("_appLauncherView");
    c.ivar<&KVView::_melodraView>("_melodraView");
}

static KVView* s_currentPanel;

KVView* KVView::sharedInstance()
{
    static KVView* shared = [] { return make<KVView>().leakRef(); }();
    return shared;
}

KVView* KVView::currentPanel() { return s_currentPanel; }

// Gives a view the name its owner keeps it under, for dumps and targets.
template<typename T>
static RefPtr<T> named(RefPtr<T> view, const char* name)
{
    view->setName(name);
    return view;
}

KVView::KVView()
{
    s_currentPanel = this;
    setName("KVView");

    _settings = KVSettings::sharedInstance();
    _musicProvider = CVMusicProvider::sharedInstance();
    _kavelinBundle = NSBundle::bundleWithPath(kavelinBundlePath);

    _previousInterfaceOrientation = -1;
    _hasUpdatedAtLeastOnce = false;
    _isAnAlarmActive = false;
    _timerState = -1;
    setBackgroundColor(UIColor::clearColor());

    // Every step is a message to itself, as on the phone, so that another
    // extension's replacement of any of them takes part in the construction.
    if (_settings->blurEnabled())
        objc::send(this, OBJC_SEL("addBackground"));
    objc::send(this, OBJC_SEL("addVestrum"));
    objc::send(this, OBJC_SEL("addForecast"));
    objc::send(this, OBJC_SEL("addAmpero"));
    objc::send(this, OBJC_SEL("addCalveraNotaraTableView"));
    objc::send(this, OBJC_SEL("addLancera"));
    objc::send(this, OBJC_SEL("addMelodraView"));

    objc::send(this, OBJC_SEL("updateLabels"));
    objc::send(this, OBJC_SEL("updateViewVisibilites"));

    RefPtr<KVView> protect(this);
    NSRunLoop::mainRunLoop()->scheduleAfter(5.0, [protect] { objc::send(protect.get(), OBJC_SEL("update")); });

    NSTimer::scheduledTimerWithTimeInterval(static_cast<double>(0.1f), this, OBJC_SEL("frameUpdateTimer:"), nullptr, true);
    NSTimer::scheduledTimerWithTimeInterval(1.0, this, OBJC_SEL("visibilityHandlerAndTimeUpdateTimer:"), nullptr, true);
    NSTimer::scheduledTimerWithTimeInterval(_settings->weatherUpdateRate(), this, OBJC_SEL("weatherUpdateTimer:"), nullptr, true);
    if (_settings->location() == KVPanelLocation::LockScreen)
        NSTimer::scheduledTimerWithTimeInterval(10.0, this, OBJC_SEL("scheduleAndNotificationsUpdateTimer:"), nullptr, true);
}

RefPtr<UIImage> KVView::loadBundleImage(const std::string& name, CGSize size) const
{
    if (!_kavelinBundle)
        return nullptr;
    auto image = UIImage::imageWithContentsOfFile(_kavelinBundle->pathForResource(name, "png"));
    return CVImageFactory::imageSetScale(image.get(), size);
}

void KVView::addBackground()
{
    StrongId controller = objc::send<StrongId>(objc::objc_getClass("SBWallpaperController"), OBJC_SEL("sharedInstance"));
    StrongId wallpaperView = objc::object_getIvar(controller, "_lockscreenWallpaperView");
    if (!wallpaperView)
        wallpaperView = objc::object_getIvar(controller, "_sharedWallpaperView");
    if (!wallpaperView)
        wallpaperView = objc::object_getIvar(controller, "_homescreenWallpaperView");

    _wallpaperImageView = named(make<UIImageView>(objc::send<RefPtr<UIImage>>(wallpaperView, OBJC_SEL("wallpaperImage"))), "_wallpaperImageView");
    _wallpaperImageView->setContentMode(UIViewContentModeScaleAspectFill);
    _wallpaperImageView->setClipsToBounds(true);
    addSubview(_wallpaperImageView.get());

    _blurEffectView = named(make<UIVisualEffectView>(UIBlurEffect::effectWithStyle(2)), "_blurEffectView");
    _blurEffectView->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    addSubview(_blurEffectView.get());
}

void KVView::addCalveraNotaraTableView()
{
    _tableViewController = make<KVTableViewController>();
    addSubview(_tableViewController->tableView());
}

void KVView::addLancera()
{
    _appLauncherView = named(make<KVAppLauncherView>(), "_appLauncherView");
    addSubview(_appLauncherView.get());
}

void KVView::addMelodraView()
{
    _melodraView = named(make<KVMelodraView>(), "_melodraView");
    addSubview(_melodraView.get());
}

void KVView::changeFrame(CGRect frame)
{
    double w = frame.size.width;
    double h = frame.size.height;
    bool onLockScreen = _settings->location() == KVPanelLocation::LockScreen;
    setFrame(CGRectMake(onLockScreen ? w : 0, 0, w, h));
    if (_wallpaperImageView)
        _wallpaperImageView->setFrame(bounds());
    if (_blurEffectView)
        _blurEffectView->setFrame(bounds());

    double topMargin, alarmLineY, weatherTop, dateOffset;
    if (!_settings->shouldShowStatusBar()) {
        topMargin = 5, alarmLineY = 93, weatherTop = 6.25, dateOffset = 0;
    } else if (_settings->location() == KVPanelLocation::NotificationCenter) {
        topMargin = 5, alarmLineY = 88, weatherTop = 3.75, dateOffset = -5;
    } else {
        topMargin = 10, alarmLineY = 98, weatherTop = 8.75, dateOffset = 5;
    }
    layoutVestrum(topMargin, alarmLineY, dateOffset);
    layoutAmpero();
    layoutForecast(weatherTop);

    objc::send(_appLauncherView, OBJC_SEL("changeFrame:"), bounds());
    objc::send(_appLauncherView, OBJC_SEL("update"));
    objc::send(_melodraView, OBJC_SEL("changeFrame:"), bounds());
    objc::send(_tableViewController, OBJC_SEL("changeFrame:"), bounds());
    objc::send(_tableViewController, OBJC_SEL("refreshTableViewLayout"));
}

void KVView::updateViewVisibilites()
{
    if (_amperoContainerView)
        _amperoContainerView->setHidden(!_settings->amperoEnabled());
    _alarmTimerLabel->setHidden(!(_settings->showAlarmTimer() && systemVersionAtLeast("9.0") && !systemVersionAtLeast("10.0")));
    _appLauncherView->setHidden(!_settings->lanceraEnabled());
    _melodraView->setHidden(!(_settings->melodraEnabled() && _musicProvider->nowPlayingInfoExists()));
    objc::send(_tableViewController, OBJC_SEL("changeFrame:"), bounds());
    objc::send(_melodraView, OBJC_SEL("changeFrame:"), bounds());
}

void KVView::frameUpdateTimer(NSTimer*)
{
    // Cheap when nothing changed: one orientation question, no layout.
    int orientation = static_cast<int>(objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation")));
    if (orientation == _previousInterfaceOrientation)
        return;
    CGRect screen = UIScreen::mainScreen()->bounds();
    double shorter = std::min(screen.size.width, screen.size.height);
    double longer = std::max(screen.size.width, screen.size.height);
    CGRect frame = orientation == 1 ? CGRectMake(0, 0, shorter, longer) : CGRectMake(0, 0, longer, shorter);
    objc::send(this, OBJC_SEL("changeFrame:"), frame);
    _previousInterfaceOrientation = orientation;
}

// Whether a call or a FaceTime call is ringing or going on.
static bool callInProgress()
{
    StrongId telephony = objc::send<StrongId>(objc::objc_getClass("SBTelephonyManager"), OBJC_SEL("sharedTelephonyManager"));
    StrongId conference = objc::send<StrongId>(objc::objc_getClass("SBConferenceManager"), OBJC_SEL("sharedInstance"));
    return objc::send<bool>(telephony, OBJC_SEL("inCall")) || objc::send<bool>(telephony, OBJC_SEL("incomingCallExists"))
        || objc::send<bool>(conference, OBJC_SEL("activeFaceTimeCallExists")) || objc::send<bool>(conference, OBJC_SEL("faceTimeInvitationExists"));
}

void KVView::visibilityHandlerAndTimeUpdateTimer(NSTimer*)
{
    if (_settings->location() == KVPanelLocation::LockScreen) {
        bool mustHide = fullscreenAlertShowing() || callInProgress();
        if (mustHide)
            setHidden(true);
        else if (isHidden())
            setHidden(false);
    }
    objc::send(this, OBJC_SEL("updateTimeDatelabels"));
    objc::send(this, OBJC_SEL("updateAmperoSummary"));
    objc::send(this, OBJC_SEL("updateAlarmTimerLabel"));
    objc::send(this, OBJC_SEL("updateViewVisibilites"));
}

void KVView::weatherUpdateTimer(NSTimer*) { objc::send(this, OBJC_SEL("updateForecastLabels")); }

void KVView::scheduleAndNotificationsUpdateTimer(NSTimer*)
{
    StrongId backlight = objc::send<StrongId>(objc::objc_getClass("SBBacklightController"), OBJC_SEL("sharedInstance"));
    bool screenOn = systemVersionAtLeast("9.0") && !systemVersionAtLeast("10.0")
        ? objc::send<bool>(backlight, OBJC_SEL("screenIsOn"))
        : !objc::send<bool>(backlight, OBJC_SEL("screenIsOff"));
    StrongId lockScreenManager = objc::send<StrongId>(objc::objc_getClass("SBLockScreenManager"), OBJC_SEL("sharedInstance"));
    if (screenOn && objc::send<bool>(lockScreenManager, OBJC_SEL("isUILocked")))
        objc::send(_tableViewController, OBJC_SEL("reloadTableViewData"));
}

void KVView::update()
{
    objc::send(_tableViewController, OBJC_SEL("reloadTableViewData"));
    objc::send(this, OBJC_SEL("updateLabels"));
    _hasUpdatedAtLeastOnce = true;
}

void KVView::updateLabels()
{
    objc::send(this, OBJC_SEL("updateTimeDatelabels"));
    objc::send(this, OBJC_SEL("updateAlarmTimerLabel"));
    objc::send(this, OBJC_SEL("updateForecastLabels"));
    _timeDateLabel->setTextColor(_settings->timeColor());
    RefPtr<UIColor> alarmTimerColor = _settings->alarmTimerColor();
    _alarmTimerLabel->setTextColor(alarmTimerColor);
    _alarmImage = CVImageFactory::imageSetColor(_alarmImage.get(), alarmTimerColor.get());
    _timerImage = CVImageFactory::imageSetColor(_timerImage.get(), alarmTimerColor.get());
    RefPtr<UIColor> weatherColor = _settings->weatherColor();
    for (auto* label : { _weatherIconAndConditionNameLabel.get(), _highLowLabel.get(), _temperatureLabel.get(), _weatherErrorLabel.get() })
        label->setTextColor(weatherColor);
    if (_batteryPercentLabel)
        _batteryPercentLabel->setTextColor(_settings->amperoThemeColor());
    // The alarm line carries its icons inline: rebuild it with the new tint.
    objc::send(this, OBJC_SEL("updateAlarmTimerLabel"));
}
