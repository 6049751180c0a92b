#include "KVAmperoEstimator.h"

#include <Foundation/IntegerConversion.h>
#include <Foundation/NSString.h>

#include <climits>
#include <cmath>

// Seconds of use per mAh left, by device: calling, HD video, internet,
// music, standby. The iPad figures are one value for the first four and do
// not follow the iPhones' standby ratio; they are as measured.
using Multipliers = std::array<double, KVAmperoEstimator::usageRowCount>;
static constexpr Multipliers olderPhones { 23.08, 23.08, 23.08, 92.31, 553.85 };
static constexpr Multipliers iPhone6 { 27.85, 21.88, 21.88, 99.45, 477.35 };
static constexpr Multipliers iPhone6Plus { 29.64, 17.29, 14.82, 98.8, 597.74 };
static constexpr Multipliers iPhone6SPlus { 31.42, 18.33, 15.71, 104.73, 633.6 };
static constexpr Multipliers largeIPads { 4.08, 4.08, 4.08, 4.08, 40.08 };
static constexpr Multipliers firstIPadMinis { 5.56, 5.56, 5.56, 5.56, 50.56 };
static constexpr Multipliers iPadAir2 { 4.9, 4.9, 4.9, 4.9, 49.0 };
static constexpr Multipliers laterIPadMinis { 7.03, 7.03, 7.03, 7.03, 70.03 };

void KVAmperoEstimator::determineDevice(long long code)
{
    _iPhone4S = code == 4;
    _iPhone5 = code == 5;
    _iPhone5C = code == 6;
    _iPhone5S = code == 7;
    _iPhone6 = code == 8;
    _iPhone6Plus = code == 9;
    _iPhone6S = code == 10;
    _iPhone6SPlus = code == 11;
    _iPad2 = code == 14;
    _iPadMini = code == 15;
    _iPad3 = code == 16;
    _iPad4 = code == 17;
    _iPadAir = code == 18;
    _iPadMini2 = code == 19;
    _iPadAir2 = code == 20;
    _iPadMini3 = code == 21;
    _iPadMini4 = code == 22;
    _iPod5 = code == 29;
    _iPod6 = code == 30;
}

Multipliers KVAmperoEstimator::multipliers() const
{
    if (_iPhone4S || _iPhone5 || _iPhone5C || _iPhone5S || _iPod5 || _iPod6)
        return olderPhones;
    if (_iPhone6Plus)
        return iPhone6Plus;
    if (_iPhone6 || _iPhone6S)
        return iPhone6;
    if (_iPhone6SPlus)
        return iPhone6SPlus;
    if (_iPad2 || _iPad3 || _iPad4 || _iPadAir)
        return largeIPads;
    if (_iPadMini || _iPadMini2)
        return firstIPadMinis;
    if (_iPadAir2)
        return iPadAir2;
    if (_iPadMini3)
        return laterIPadMinis;
    if (_iPadMini4)
        return laterIPadMinis;
    // Unknown devices are taken for an iPhone 6.
    return iPhone6;
}

double KVAmperoEstimator::phoneTimeMultiplier() const { return multipliers()[Phone]; }
double KVAmperoEstimator::hdVideoTimeMultiplier() const { return multipliers()[HDVideo]; }
double KVAmperoEstimator::wifiTimeMultiplier() const { return multipliers()[Wifi]; }
double KVAmperoEstimator::musicTimeMultiplier() const { return multipliers()[Music]; }
double KVAmperoEstimator::standbyTimeMultiplier() const { return multipliers()[Standby]; }

int KVAmperoEstimator::isecFromSeconds(int seconds)
{
    double whole;
    std::modf(static_cast<double>(seconds), &whole);
    return static_cast<int>(whole);
}

static const char* unitWord(int count, const char* singular, const char* plural) { return count == 1 ? singular : plural; }

std::string KVAmperoEstimator::durationText(int seconds, const char* twoParts, const char* onePart)
{
    int s = seconds;
    int h = s / 3600;
    int r = s - 3600 * h;
    int m = r / 60;
    int x = s - 60 * (s / 60);
    if (h != 0)
        return NSString::format(twoParts, h, unitWord(h, "hour", "hours"), m, unitWord(m, "minute", "minutes"));
    if (m != 0)
        return NSString::format(twoParts, m, unitWord(m, "minute", "minutes"), x, unitWord(x, "second", "seconds"));
    return NSString::format(onePart, x, unitWord(x, "second", "seconds"));
}

void KVAmperoEstimator::learnDrain()
{
    if (!_inTimeCountingState) {
        _secondsSinceLastBatteryPercentageChangeCounter = 0;
        _inTimeCountingState = true;
        return;
    }
    if (!(_currentBatteryPercentage < _previousBatteryPercentage))
        return;
    _secondsSinceLastBatteryPercentageChange = _secondsSinceLastBatteryPercentageChangeCounter;
    _inTimeCountingState = false;
    // The first drop ends an interval that began at an arbitrary point: it
    // only starts the learning.
    if (!_hasAlreadyDecreasedAtLeastOnce) {
        _hasAlreadyDecreasedAtLeastOnce = true;
        return;
    }
    double estimate = static_cast<double>(_secondsSinceLastBatteryPercentageChange) * _currentBatteryPercentage;
    if (_timeLeft == -1)
        _timeLeft = truncatedToInteger<int>(estimate);
    else
        _timeLeft = truncatedToInteger<int>(static_cast<double>(_timeLeft) + estimate) / 2;
}

KVAmperoEstimator::Presentation KVAmperoEstimator::AmperoUpdate(const Reading& reading)
{
    Presentation presentation;
    _currentBatteryPercentage = reading.batteryCapacity * 100.0;
    int percent = truncatedToInteger<int>(_currentBatteryPercentage);

    if (reading.isOnAC) {
        if (percent <= 99) {
            presentation.animatedBolt = true;
            // A fixed charge rate of 1000 mAh an hour, whatever the device.
            double hoursToFull = (reading.rawMaxCapacity - reading.rawCurrentCapacity) / 1000.0;
            int hours = truncatedToInteger<int>(std::floor(hoursToFull));
            int minutes = truncatedToInteger<int>(std::fmod(hoursToFull, 1.0) * 60.0);
            std::string first = NSString::format("%d%% Charging\n", percent);
            std::string second = hours != 0
                ? NSString::format("Battery full in %d %s and %d %s", hours, unitWord(hours, "hour", "hours"), minutes, unitWord(minutes, "minute", "minutes"))
                : NSString::format("Battery full in about %d %s", minutes, unitWord(minutes, "minute", "minutes"));
            presentation.batteryText = BatteryText { first + second, "Charging", BatteryText::Color::Green };
        } else {
            presentation.stillBoltFrame = 10;
            presentation.batteryText = BatteryText { "Battery fully charged\n", "Battery fully charged\n", BatteryText::Color::Green };
        }
        // Calibration starts afresh after every charging period.
        _inTimeCountingState = false;
        _timeLeft = -1;
        _hasAlreadyDecreasedAtLeastOnce = false;
    } else {
        double p = _currentBatteryPercentage;
        // Each step of ten takes the frame of its upper end: 0 < p <= 10 is
        // frame one, 90 < p <= 100 frame ten.
        for (int frame = 0; frame <= 10; ++frame) {
            if (p >= 0.0 && p <= frame * 10.0) {
                presentation.stillBoltFrame = frame;
                break;
            }
        }
        bool wasCounting = _inTimeCountingState;
        learnDrain();
        if (!wasCounting && !_hasAlreadyDecreasedAtLeastOnce)
            presentation.batteryText = BatteryText { calibrationText, "", BatteryText::Color::Theme };
    }
    _previousBatteryPercentage = _currentBatteryPercentage;

    static constexpr std::array<std::pair<const char*, const char*>, usageRowCount> formats { {
        { "%d %s and %d %s of calling.", "%d %s of calling." },
        { "%d %s and %d %s of HD video.", "%d %s of HD video." },
        { "%d %s and %d %s of internet.", "%d %s of internet." },
        { "%d %s and %d %s of music listening.", "%d %s of music listening." },
        { "%d %s and %d %s of standby time.", "%d %s of standby time." },
    } };
    auto table = multipliers();
    for (int row = 0; row < usageRowCount; ++row) {
        int seconds = isecFromSeconds(truncatedToInteger<int>(reading.rawCurrentCapacity * table[row]));
        presentation.usageTexts[row] = durationText(seconds, formats[row].first, formats[row].second);
    }
    return presentation;
}

bool KVAmperoEstimator::chargerStateChanged(bool isOnAC)
{
    bool changed = isOnAC != _chargerWasPluggedIn;
    _chargerWasPluggedIn = isOnAC;
    return changed;
}

std::optional<KVAmperoEstimator::BatteryText> KVAmperoEstimator::countDown()
{
    if (_inTimeCountingState)
        ++_secondsSinceLastBatteryPercentageChangeCounter;
    if (_timeLeft < 1)
        return std::nullopt;
    std::string first = NSString::format("%d%% Draining\n", truncatedToInteger<int>(_currentBatteryPercentage));
    std::string second = durationText(isecFromSeconds(_timeLeft), "Battery empty in %d %s and %d %s", "Battery empty in %d %s");
    --_timeLeft;
    return BatteryText { first + second, "Draining", BatteryText::Color::Red };
}
