#include "ScenarioChecks.h"

#include "scenario/ScenarioLineReader.h"
#include "settings/PreferenceChecks.h"

#include <host/Weather/WeatherGlyphs.h>

namespace sim {

void ScenarioChecks::checkWeatherIcon(const Command& command, const std::optional<std::string>& icon, Warnings& warnings)
{
    if (!icon || WeatherGlyphs::isKnownIcon(*icon))
        return;
    // The host draws a plain cloud for a name it does not know.
    std::vector<std::string> known = WeatherGlyphs::knownIcons();
    std::vector<std::string_view> names(known.begin(), known.end());
    warnings.warn(command, "unknown weather icon '" + shownInMessage(*icon) + "'" + suggestionFor(*icon, names) + " (icons: " + joinedNames(names) + "); the host draws a cloud");
}

void ScenarioChecks::run(const std::vector<Command>& commands, Warnings& warnings)
{
    PreferenceChecks::warn(commands, warnings);
    for (const Command& command : commands) {
        switch (command.kind) {
        case CommandKind::Weather:
            checkWeatherIcon(command, command.as<WeatherCommand>().icon, warnings);
            break;
        case CommandKind::WeatherHour:
            checkWeatherIcon(command, command.as<WeatherHourCommand>().icon, warnings);
            break;
        case CommandKind::WeatherDay:
            checkWeatherIcon(command, command.as<WeatherDayCommand>().icon, warnings);
            break;
        default:
            break;
        }
    }
}

}
