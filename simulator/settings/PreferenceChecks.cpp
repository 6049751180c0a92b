#include "PreferenceChecks.h"

#include "BuildPaths.h"

#include <algorithm>

namespace sim {

std::vector<Diagnostic> PreferenceChecks::run(const std::vector<Command>& commands, const SettingsPane& pane)
{
    std::vector<Diagnostic> warnings;
    for (const Command& command : commands) {
        if (command.kind != CommandKind::Prefs)
            continue;
        const auto& prefs = command.as<PrefsCommand>();
        if (auto problem = pane.checkPreference(prefs.key, prefs.value))
            warnings.push_back({ command.file, command.line, *problem });
    }
    return warnings;
}

size_t PreferenceChecks::warn(const std::vector<Command>& commands, Warnings& warnings)
{
    auto firstPrefs = std::find_if(commands.begin(), commands.end(), [](const Command& c) { return c.kind == CommandKind::Prefs; });
    if (firstPrefs == commands.end())
        return 0;
    std::string error;
    auto pane = SettingsPane::load(BuildPaths::locate().settingsPane / "Root.plist", error);
    if (!pane) {
        warnings.warn(*firstPrefs, "preferences are not checked: " + error);
        return 1;
    }
    auto found = run(commands, *pane);
    for (const Diagnostic& warning : found)
        warnings.warn(warning.file, warning.line, warning.message);
    return found.size();
}

}
