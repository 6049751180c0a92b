#pragma once

#include "KVAmperoEstimator.h"

#include <CorvLib/CVDisplayView.h>

#include <array>
#include <cstdint>

class KVSettings;
class NSBundle;
class NSTimer;
class UIColor;
class UIImage;
class UIImageView;
class UILabel;
class UIVisualEffectView;

// The battery overlay opened from the panel's battery summary: a large bolt
// (playing while charging, else filled to the level), the battery state in
// two lines and five rows of usage times. Its estimator samples every 30
// seconds and counts down every second from creation on, shown or not.
class KVAmperoDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVAmperoDisplayView)
public:
    KVAmperoDisplayView();
    static KVAmperoDisplayView* sharedInstance();

    void show();
    void hide();
    void updateFrame();

    void determineDevice();
    // One sample: reads the battery and redraws the bolt and every text.
    void AmperoUpdate(NSTimer*);
    // The one-second tick: notices the charger and counts the time left down.
    void AmperoBatterySecondsUpdate(NSTimer*);
    int isecFromSeconds(int seconds) const { return KVAmperoEstimator::isecFromSeconds(seconds); }
    double phoneTimeMultiplier() const { return _estimator.phoneTimeMultiplier(); }
    double hdVideoTimeMultiplier() const { return _estimator.hdVideoTimeMultiplier(); }
    double wifiTimeMultiplier() const { return _estimator.wifiTimeMultiplier(); }
    double musicTimeMultiplier() const { return _estimator.musicTimeMultiplier(); }
    double standbyTimeMultiplier() const { return _estimator.standbyTimeMultiplier(); }

    const KVAmperoEstimator& estimator() const { return _estimator; }
    int timeLeft() const { return _estimator._timeLeft; }
    void setTimeLeft(int seconds) { _estimator._timeLeft = seconds; }

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<NSBundle> _kavelinBundle;
    RefPtr<UIVisualEffectView> _blurView;
    RefPtr<UIImageView> _animatedBigBoltView;
    RefPtr<UIImageView> _bigBoltView;
    // _boltFrameZero ... _boltFrameTen.
    std::array<RefPtr<UIImage>, 11> _boltFrames;
    RefPtr<UIView> _batteryContainerView;
    RefPtr<UIImageView> _phoneImageView, _hdVideoImageView, _wifiImageView, _musicImageView, _standbyImageView;
    RefPtr<UILabel> _batteryLabel;
    RefPtr<UILabel> _phoneLabel, _hdVideoLabel, _wifiLabel, _musicLabel, _standbyLabel;
    // Each row icon at its 50-point size, and the copy shown: the same, or a
    // smaller one where the rows are too close together for the full size.
    std::array<std::pair<RefPtr<UIImage>, RefPtr<UIImage>>, KVAmperoEstimator::usageRowCount> _rowIcons;

    // Where the rows go in an overlay `height` high, for a bolt and row
    // square of `side` points (100 upright, 50 turned): the first row's
    // centre, the distance between rows, each icon's square and the icon
    // itself. See docs/overlays.md.
    struct RowGeometry {
        double firstCentre;
        double pitch;
        double square;
        double icon;
    };
    static RowGeometry rowGeometry(double height, double side);
    // The power source's registry handle, taken once.
    uint32_t _powerSource { 0 };

private:
    void initAnimatedBigBoltView();
    void initBigBoltView();
    void initBatteryView();
    // One usage row: its icon (tinted) over one centred line of text.
    void initUsageRow(KVAmperoEstimator::UsageRow, const char* resource, const char* imageName, const char* labelName, RefPtr<UIImageView>&, RefPtr<UILabel>&);
    RefPtr<UIImage> bundleImage(const char* resource) const;
    void setBatteryText(const KVAmperoEstimator::BatteryText&);
    std::array<UILabel*, KVAmperoEstimator::usageRowCount> usageLabels() const;

    KVAmperoEstimator _estimator;
};
