// The panel's battery summary.

#include "KVView.h"

#include "KVAmpero/KVAmperoDisplayView.h"
#include "host/HookGroup.h"
#include "settings/KVSettings.h"

#include <Foundation/IntegerConversion.h>
#include <Foundation/NSProcessInfo.h>
#include <Foundation/NSString.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImage.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <objc/SharedInstance.h>

static const CGSize batteryIconSize { 25, 12.5 };

void KVView::addAmpero()
{
    if (!_settings->amperoEnabled())
        return;
    _amperoContainerView = make<UIView>();
    _amperoContainerView->setName("_amperoContainerView");
    _amperoContainerView->setUserInteractionEnabled(true);
    _amperoContainerView->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("amperoContainerSingleTapRecognizer:")).get());
    addSubview(_amperoContainerView.get());

    _currentBatteryStateImageView = make<UIImageView>(CGRectMake(0, 0, batteryIconSize.width, batteryIconSize.height));
    _currentBatteryStateImageView->setName("_currentBatteryStateImageView");
    _amperoContainerView->addSubview(_currentBatteryStateImageView.get());

    _batteryPercentLabel = make<UILabel>();
    _batteryPercentLabel->setName("_batteryPercentLabel");
    _batteryPercentLabel->setNumberOfLines(1);
    _batteryPercentLabel->setTextAlignment(NSTextAlignmentLeft);
    _batteryPercentLabel->setAdjustsFontSizeToFitWidth(true);
    _batteryPercentLabel->setTextColor(_settings->amperoThemeColor());
    _amperoContainerView->addSubview(_batteryPercentLabel.get());

    _batteryChargingImage = loadBundleImage("Battery/BatteryCharging", batteryIconSize);
    _lowPowerBatteryChargingImage = loadBundleImage("Battery/LowBatteryCharging", batteryIconSize);
    for (int step = 0; step <= 10; ++step) {
        _batteryDrainingImages[step] = loadBundleImage("Battery/Battery" + std::to_string(step * 10), batteryIconSize);
        _lowPowerBatteryDrainingImages[step] = loadBundleImage("Battery/LowBattery" + std::to_string(step * 10), batteryIconSize);
    }

    // Made now so that its first opening is quick.
    objc::sharedInstance<KVAmperoDisplayView>();
}

void KVView::layoutAmpero()
{
    if (!_amperoContainerView)
        return;
    // On the alarm line's row, under the clock's left edge; in front of the
    // line so that it takes its own taps.
    CGRect clock = _timeContainerView->frame();
    CGRect line = _alarmTimerLabel->frame();
    double height = line.size.height;
    _amperoContainerView->setFrame(CGRectMake(clock.origin.x, line.origin.y, 80, height));
    _currentBatteryStateImageView->setFrame(CGRectMake(0, (height - batteryIconSize.height) / 2, batteryIconSize.width, batteryIconSize.height));
    _batteryPercentLabel->setFrame(CGRectMake(batteryIconSize.width + 5, 0, 80 - batteryIconSize.width - 5, height));
    _batteryPercentLabel->setFont(UIFont::fontWithName("HelveticaNeue-Light", height - 6));
    bringSubviewToFront(_amperoContainerView.get());
}

UIImage* KVView::batteryImageFor(bool charging, bool lowPower, int level) const
{
    if (charging)
        return (lowPower ? _lowPowerBatteryChargingImage : _batteryChargingImage).get();
    if (level < 0 || level > 100)
        return nullptr;
    // Each level shows the next multiple of ten at or above it.
    int step = (level + 9) / 10;
    return (lowPower ? _lowPowerBatteryDrainingImages : _batteryDrainingImages)[step].get();
}

void KVView::updateAmperoSummary()
{
    StrongId controller = objc::send<StrongId>(objc::objc_getClass("SBUIController"), OBJC_SEL("sharedInstance"));
    float capacity = static_cast<float>(objc::send<double>(controller, OBJC_SEL("batteryCapacity")));
    int level = truncatedToInteger<int>(capacity * 100.0f);
    // A panel built without the battery summary has no label: nothing happens.
    if (_batteryPercentLabel)
        _batteryPercentLabel->setText(NSString::format("%d%%", level));
    bool lowPower = systemVersionAtLeast("9.0") && !systemVersionAtLeast("10.0") && NSProcessInfo::processInfo()->isLowPowerModeEnabled();
    bool charging = objc::send<bool>(controller, OBJC_SEL("isOnAC"));
    if (UIImage* image = batteryImageFor(charging, lowPower, level); image && _currentBatteryStateImageView)
        _currentBatteryStateImageView->setImage(RefPtr<UIImage>(image));
}
