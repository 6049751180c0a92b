#pragma once

#include <array>
#include <optional>
#include <string>

// The battery overlay's estimator, apart from its views so that it runs on
// plain readings. Every 30 seconds a sample decides between the charging and
// the draining presentation; while draining it learns the seconds a one-
// percent drop takes and turns them into a time left, which the one-second
// tick counts down; and it turns the remaining charge into five usage times
// through the device's multipliers.
//
// The fields keep the names the overlay has always given them.
class KVAmperoEstimator {
public:
    static constexpr const char* calibrationText = "Calibrating Initial Battery Drain Rate...\n(this may take a while)";

    // What the host reports at a sample.
    struct Reading {
        double rawCurrentCapacity { -100.0 }; // mAh
        double rawMaxCapacity { -100.0 }; // mAh
        double batteryCapacity { 0 }; // fraction, 0 to 1
        bool isOnAC { false };
    };

    // The battery label's text: the first occurrence of `highlighted` is set
    // in `highlightColor`, the rest in the label's own colour.
    struct BatteryText {
        enum class Color { Theme, Green, Red };
        std::string text;
        std::string highlighted;
        Color highlightColor { Color::Theme };
        bool operator==(const BatteryText&) const = default;
    };

    enum UsageRow { Phone, HDVideo, Wifi, Music, Standby };
    static constexpr int usageRowCount = 5;

    // What a sample changes on screen.
    struct Presentation {
        // The animated bolt plays (and the still one is hidden), or the
        // still bolt shows with the animated one hidden and stopped.
        bool animatedBolt { false };
        // The still bolt's frame, 0 to 10; nothing keeps the one it had.
        std::optional<int> stillBoltFrame;
        // Nothing leaves the label as it was.
        std::optional<BatteryText> batteryText;
        std::array<std::string, usageRowCount> usageTexts;
    };

    explicit KVAmperoEstimator(long long deviceCode = 0) { determineDevice(deviceCode); }

    // Sets the device flags from the model code.
    void determineDevice(long long deviceCode);
    double phoneTimeMultiplier() const;
    double hdVideoTimeMultiplier() const;
    double wifiTimeMultiplier() const;
    double musicTimeMultiplier() const;
    double standbyTimeMultiplier() const;

    // One sample.
    Presentation AmperoUpdate(const Reading&);
    // The one-second tick, first part: whether the charger was connected or
    // disconnected since the last tick (a sample is then due at once).
    bool chargerStateChanged(bool isOnAC);
    // The one-second tick, second part: advances the interval being timed
    // and, while a time left is known, counts it down; answers the draining
    // text to show, if any.
    std::optional<BatteryText> countDown();

    // The integral part of the seconds (every integer is its own).
    static int isecFromSeconds(int seconds);
    // A duration in at most two units from hours, minutes and seconds:
    // `twoParts` takes "%d %s" twice, `onePart` once.
    static std::string durationText(int seconds, const char* twoParts, const char* onePart);

    double _currentBatteryPercentage { -1.0 };
    double _previousBatteryPercentage { -1.0 };
    bool _inTimeCountingState { false };
    bool _hasAlreadyDecreasedAtLeastOnce { false };
    int _timeLeft { -1 };
    int _secondsSinceLastBatteryPercentageChange { 0 };
    int _secondsSinceLastBatteryPercentageChangeCounter { 0 };
    bool _chargerWasPluggedIn { false };

    bool _iPhone4S { false }, _iPhone5 { false }, _iPhone5C { false }, _iPhone5S { false }, _iPhone6 { false }, _iPhone6Plus { false },
        _iPhone6S { false }, _iPhone6SPlus { false }, _iPad2 { false }, _iPadMini { false }, _iPad3 { false }, _iPad4 { false },
        _iPadAir { false }, _iPadMini2 { false }, _iPadAir2 { false }, _iPadMini3 { false }, _iPadMini4 { false }, _iPod5 { false },
        _iPod6 { false };

private:
    // The five multipliers of the device's row of the table.
    std::array<double, usageRowCount> multipliers() const;
    void learnDrain();
};
