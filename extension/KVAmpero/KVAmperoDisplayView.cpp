#include "KVAmperoDisplayView.h"

#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVImageFactory.h>
#include <CorvLib/CViOSVersion.h>
#include <Foundation/NSBundle.h>
#include <Foundation/NSNumber.h>
#include <Foundation/NSTimer.h>
#include <UIKit/NSAttributedString.h>
#include <UIKit/UIApplication.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UIVisualEffectView.h>

#include <algorithm>

KV_ROOT_WINDOW_CAPTURE("KVAmpero/KVAmperoDisplayView", 41)

OBJC_IMPLEMENT_CLASS(KVAmperoDisplayView, CVDisplayView)
{
    c.classMethod<&KVAmperoDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVAmperoDisplayView::show>("show");
    c.method<&KVAmperoDisplayView::hide>("hide");
    c.method<&KVAmperoDisplayView::updateFrame>("updateFrame");
    c.method<&KVAmperoDisplayView::determineDevice>("determineDevice");
    c.method<&KVAmperoDisplayView::AmperoUpdate>("AmperoUpdate:");
    c.method<&KVAmperoDisplayView::AmperoBatterySecondsUpdate>("AmperoBatterySecondsUpdate:");
    c.method<&KVAmperoDisplayView::isecFromSeconds>("isecFromSeconds:");
    c.method<&KVAmperoDisplayView::phoneTimeMultiplier>("phoneTimeMultiplier");
    c.method<&KVAmperoDisplayView::hdVideoTimeMultiplier>("hdVideoTimeMultiplier");
    c.method<&KVAmperoDisplayView::wifiTimeMultiplier>("wifiTimeMultiplier");
    c.method<&KVAmperoDisplayView::musicTimeMultiplier>("musicTimeMultiplier");
    c.method<&KVAmperoDisplayView::standbyTimeMultiplier>("standbyTimeMultiplier");
    c.method<&KVAmperoDisplayView::timeLeft>("timeLeft");
    c.method<&KVAmperoDisplayView::setTimeLeft>("setTimeLeft:");
}

static constexpr double rowIconSide = 50;
static constexpr double rowLabelHeight = 18;
static constexpr int rowCount = 5;
// The first row's centre and the distance between rows, as shares of the
// overlay's height: 0.30, 0.44, ... 0.86.
static constexpr double firstRowShare = 0.30;
static constexpr double rowPitchShare = 0.14;
static constexpr double batteryLabelGap = 2.5;
static constexpr double batteryLabelHeight = 36;
// What the rows leave free at the bottom when they share the height.
static constexpr double bottomMargin = 5;

static constexpr const char* kavelinBundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";

// IOKit's registry, reached through the host's registry object by name.
static StrongId ioRegistry() { return objc::send<StrongId>(objc::objc_getClass("IORegistry"), OBJC_SEL("sharedRegistry")); }

static uint32_t IOServiceGetMatchingService(const std::string& className)
{
    return objc::send<uint32_t>(ioRegistry(), OBJC_SEL("matchingServiceNamed:"), className);
}

// A number property of a registry entry, or nothing.
static std::optional<double> IORegistryEntryCreateCFProperty(uint32_t entry, const std::string& key)
{
    auto number = objc::send<RefPtr<NSNumber>>(ioRegistry(), OBJC_SEL("propertyOfService:forKey:"), entry, key);
    if (!number)
        return std::nullopt;
    return number->doubleValue();
}

static StrongId homeScreenController() { return objc::send<StrongId>(objc::objc_getClass("SBUIController"), OBJC_SEL("sharedInstance")); }

KVAmperoDisplayView* KVAmperoDisplayView::sharedInstance() { return sharedOverlayInstance<KVAmperoDisplayView>(); }

KVAmperoDisplayView::KVAmperoDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _themeColor = _settings->amperoThemeColor();
    _kavelinBundle = NSBundle::bundleWithPath(kavelinBundlePath);
    _powerSource = IOServiceGetMatchingService("IOPMPowerSource");
    _blurView = addDarkBlur(displayContainerView());

    determineDevice();
    initAnimatedBigBoltView();
    initBigBoltView();
    initBatteryView();
    initUsageRow(KVAmperoEstimator::Phone, "Ampero/Phone", "_phoneImageView", "_phoneLabel", _phoneImageView, _phoneLabel);
    initUsageRow(KVAmperoEstimator::HDVideo, "Ampero/HDVideo", "_hdVideoImageView", "_hdVideoLabel", _hdVideoImageView, _hdVideoLabel);
    initUsageRow(KVAmperoEstimator::Wifi, "Ampero/Wifi", "_wifiImageView", "_wifiLabel", _wifiImageView, _wifiLabel);
    initUsageRow(KVAmperoEstimator::Music, "Ampero/Music", "_musicImageView", "_musicLabel", _musicImageView, _musicLabel);
    initUsageRow(KVAmperoEstimator::Standby, "Ampero/Standby", "_standbyImageView", "_standbyLabel", _standbyImageView, _standbyLabel);

    _bigBoltView->setHidden(false);
    _bigBoltView->setImage(_boltFrames[0]);
    AmperoUpdate(nullptr);
    NSTimer::scheduledTimerWithTimeInterval(30.0, this, OBJC_SEL("AmperoUpdate:"), nullptr, true);
    NSTimer::scheduledTimerWithTimeInterval(1.0, this, OBJC_SEL("AmperoBatterySecondsUpdate:"), nullptr, true);
}

void KVAmperoDisplayView::determineDevice() { _estimator.determineDevice(CViOSVersion::deviceVersion()); }

RefPtr<UIImage> KVAmperoDisplayView::bundleImage(const char* resource) const
{
    if (!_kavelinBundle)
        return nullptr;
    return UIImage::imageWithContentsOfFile(_kavelinBundle->pathForResource(resource, "png"));
}

void KVAmperoDisplayView::initAnimatedBigBoltView()
{
    std::vector<RefPtr<UIImage>> frames;
    for (int index = 0; index <= 10; ++index) {
        _boltFrames[index] = CVImageFactory::imageSetScale(bundleImage(("Ampero/BoltAnimated/" + std::to_string(index)).c_str()).get(), CGSizeMake(100.0, 100.0));
        frames.push_back(_boltFrames[index]);
    }
    _animatedBigBoltView = make<UIImageView>();
    _animatedBigBoltView->setName("_animatedBigBoltView");
    _animatedBigBoltView->setUserInteractionEnabled(false);
    _animatedBigBoltView->setAnimationImages(std::move(frames));
    _animatedBigBoltView->setAnimationDuration(1.8);
    _animatedBigBoltView->setAnimationRepeatCount(0);
    _animatedBigBoltView->setHidden(true);
}

void KVAmperoDisplayView::initBigBoltView()
{
    _bigBoltView = make<UIImageView>();
    _bigBoltView->setName("_bigBoltView");
    _bigBoltView->setUserInteractionEnabled(false);
    _bigBoltView->setHidden(true);
}

void KVAmperoDisplayView::initBatteryView()
{
    _batteryContainerView = make<UIView>();
    _batteryContainerView->setName("_batteryContainerView");
    _batteryContainerView->setUserInteractionEnabled(false);
    _batteryContainerView->addSubview(_animatedBigBoltView.get());
    _batteryContainerView->addSubview(_bigBoltView.get());

    _batteryLabel = make<UILabel>();
    _batteryLabel->setName("_batteryLabel");
    _batteryLabel->setText(KVAmperoEstimator::calibrationText);
    _batteryLabel->setFont(UIFont::boldSystemFontOfSize(14));
    _batteryLabel->setNumberOfLines(2);
    _batteryLabel->setBackgroundColor(UIColor::clearColor());
    _batteryLabel->setTextColor(_themeColor);
    _batteryLabel->setTextAlignment(NSTextAlignmentCenter);
    _batteryLabel->setAdjustsFontSizeToFitWidth(true);
    _batteryContainerView->addSubview(_batteryLabel.get());
    displayContainerView()->addSubview(_batteryContainerView.get());
}

void KVAmperoDisplayView::initUsageRow(KVAmperoEstimator::UsageRow row, const char* resource, const char* imageName, const char* labelName, RefPtr<UIImageView>& imageView, RefPtr<UILabel>& label)
{
    auto icon = CVImageFactory::imageSetScale(bundleImage(resource).get(), CGSizeMake(50.0, 50.0));
    auto tinted = CVImageFactory::imageSetColor(icon.get(), _themeColor.get());
    _rowIcons[row] = { tinted, tinted };
    imageView = make<UIImageView>(tinted);
    imageView->setName(imageName);
    // The icon keeps its own size in the middle of its square.
    imageView->setContentMode(UIViewContentModeCenter);
    imageView->setUserInteractionEnabled(false);

    label = make<UILabel>();
    label->setName(labelName);
    label->setText("Calculating Info...");
    label->setFont(UIFont::boldSystemFontOfSize(13));
    label->setNumberOfLines(1);
    label->setBackgroundColor(UIColor::clearColor());
    label->setTextColor(_themeColor);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setAdjustsFontSizeToFitWidth(true);
    displayContainerView()->addSubview(imageView.get());
    displayContainerView()->addSubview(label.get());
}

std::array<UILabel*, KVAmperoEstimator::usageRowCount> KVAmperoDisplayView::usageLabels() const
{
    return { _phoneLabel.get(), _hdVideoLabel.get(), _wifiLabel.get(), _musicLabel.get(), _standbyLabel.get() };
}

void KVAmperoDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::amperoResetLockScreenDim); }

void KVAmperoDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::amperoResetLockScreenDim); }

void KVAmperoDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurView.get());
    bool portrait = objc::send<long long>(UIApplication::sharedApplication(), OBJC_SEL("_getSpringBoardOrientation")) == 1;
    double side = portrait ? 100 : 50;
    double W = width(), H = height();

    CGRect container = CGRectMake(0.5 * W - side / 2, 0.1 * H - side / 2, side, side);
    _batteryContainerView->setFrame(container);
    _animatedBigBoltView->setFrame(CGRectMake(0, 0, side, side));
    _bigBoltView->setFrame(CGRectMake(0, 0, side, side));
    _batteryLabel->setFrame(CGRectMake(-container.origin.x, side + batteryLabelGap, W, batteryLabelHeight));

    RowGeometry geometry = rowGeometry(H, side);
    UIImageView* icons[] = { _phoneImageView.get(), _hdVideoImageView.get(), _wifiImageView.get(), _musicImageView.get(), _standbyImageView.get() };
    auto labels = usageLabels();
    for (size_t row = 0; row < std::size(icons); ++row) {
        auto& [fullSize, shown] = _rowIcons[row];
        // (A missing resource leaves no image to size.)
        if (fullSize && (!shown || shown->size().width != geometry.icon))
            shown = geometry.icon == rowIconSide ? fullSize : CVImageFactory::imageSetScale(fullSize.get(), CGSizeMake(geometry.icon, geometry.icon));
        icons[row]->setImage(shown);
        double centre = geometry.firstCentre + static_cast<double>(row) * geometry.pitch;
        icons[row]->setFrame(CGRectMake(0.5 * W - geometry.square / 2, centre - geometry.square / 2, geometry.square, geometry.square));
        labels[row]->setFrame(CGRectMake(0, CGRectGetMaxY(icons[row]->frame()), W, rowLabelHeight));
    }
}

// A row is an icon centred in its square with the text's line right under
// the square. The rows keep their centres where they can; where a row's text
// would run into the next row's icon, first the square closes onto the icon
// (which brings the text up under it), then, if that is not enough, icon and
// square shrink together. Where the first icon would then still run into the
// battery text above it, the five rows share the height between that text
// and the bottom edge evenly instead.
KVAmperoDisplayView::RowGeometry KVAmperoDisplayView::rowGeometry(double height, double side)
{
    double pitch = rowPitchShare * height;
    double icon = std::min(rowIconSide, side);
    // Text bottom (centre + square / 2 + label) against the next icon's top
    // (centre + pitch - icon / 2). A square that must close in closes onto
    // the icon, so that each text stays nearer its own icon than the next.
    double square = side;
    if (square / 2 + rowLabelHeight > pitch - icon / 2)
        square = icon;
    if (icon + rowLabelHeight > pitch)
        icon = square = std::max(pitch - rowLabelHeight, 1.0);
    RowGeometry geometry { firstRowShare * height, pitch, square, icon };

    double batteryTextBottom = 0.1 * height + side / 2 + batteryLabelGap + batteryLabelHeight;
    if (geometry.firstCentre - icon / 2 >= batteryTextBottom)
        return geometry;
    pitch = (height - batteryTextBottom - bottomMargin) / rowCount;
    icon = std::clamp(pitch - rowLabelHeight, 1.0, std::min(rowIconSide, side));
    return { batteryTextBottom + icon / 2, pitch, icon, icon };
}

void KVAmperoDisplayView::setBatteryText(const KVAmperoEstimator::BatteryText& batteryText)
{
    if (batteryText.highlighted.empty()) {
        _batteryLabel->setText(batteryText.text);
        return;
    }
    auto text = NSMutableAttributedString::create(batteryText.text);
    NSRange range = text->rangeOfString(batteryText.highlighted);
    if (range.length) {
        NSTextAttributes colored;
        colored.foregroundColor = batteryText.highlightColor == KVAmperoEstimator::BatteryText::Color::Green
            ? UIColor::colorWithRed(76 / 255.0, 217 / 255.0, 100 / 255.0, 1)
            : UIColor::colorWithRed(1, 59 / 255.0, 48 / 255.0, 1);
        text->addAttributes(colored, range);
    }
    _batteryLabel->setAttributedText(text.get());
}

void KVAmperoDisplayView::AmperoUpdate(NSTimer*)
{
    KVAmperoEstimator::Reading reading;
    // A reading the registry does not have keeps its -100.0.
    if (auto current = IORegistryEntryCreateCFProperty(_powerSource, "AppleRawCurrentCapacity"))
        reading.rawCurrentCapacity = *current;
    if (auto maximum = IORegistryEntryCreateCFProperty(_powerSource, "AppleRawMaxCapacity"))
        reading.rawMaxCapacity = *maximum;
    StrongId controller = homeScreenController();
    reading.batteryCapacity = objc::send<double>(controller, OBJC_SEL("batteryCapacity"));
    reading.isOnAC = objc::send<bool>(controller, OBJC_SEL("isOnAC"));

    auto presentation = _estimator.AmperoUpdate(reading);
    if (presentation.animatedBolt) {
        if (_animatedBigBoltView->isHidden()) {
            _animatedBigBoltView->setHidden(false);
            _animatedBigBoltView->startAnimating();
        }
        if (!_bigBoltView->isHidden())
            _bigBoltView->setHidden(true);
    } else {
        if (!_animatedBigBoltView->isHidden()) {
            _animatedBigBoltView->setHidden(true);
            if (_animatedBigBoltView->isAnimating())
                _animatedBigBoltView->stopAnimating();
        }
        if (_bigBoltView->isHidden())
            _bigBoltView->setHidden(false);
    }
    if (presentation.stillBoltFrame)
        _bigBoltView->setImage(_boltFrames[*presentation.stillBoltFrame]);
    if (presentation.batteryText)
        setBatteryText(*presentation.batteryText);
    auto labels = usageLabels();
    for (size_t row = 0; row < labels.size(); ++row)
        labels[row]->setText(presentation.usageTexts[row]);
}

void KVAmperoDisplayView::AmperoBatterySecondsUpdate(NSTimer*)
{
    if (_estimator.chargerStateChanged(objc::send<bool>(homeScreenController(), OBJC_SEL("isOnAC"))))
        AmperoUpdate(nullptr);
    if (auto text = _estimator.countDown())
        setBatteryText(*text);
}
