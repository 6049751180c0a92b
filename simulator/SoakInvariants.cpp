#include "SoakInvariants.h"

#include <algorithm>

namespace sim {

std::optional<bool> SoakInvariants::expectedPanelHidden(const PanelSituation& situation)
{
    if (!situation.enabled)
        return std::nullopt;
    switch (situation.location) {
    case 1:
        // The panel's one-second timer hides it on the lock screen while an
        // alert or a call is up, and shows it again afterwards.
        return situation.fullscreenAlertFlag || situation.callOrFaceTime;
    case 2:
        // The notification centre shows the panel each time it appears and
        // nothing hides it there.
        return false;
    case 3:
    case 4: {
        // The search page hides the panel when it is presented from the
        // other edge, and shows it from the panel's own.
        if (!situation.lastSearchEdge)
            return false;
        long long ownEdge = situation.location == 3 ? 8 : 1;
        return *situation.lastSearchEdge != ownEdge;
    }
    default:
        return std::nullopt;
    }
}

bool SoakInvariants::staysFlat(long baseline, long now, long slack)
{
    return now - baseline <= std::max(slack, baseline / 4);
}

std::string SoakInvariants::token(int serial)
{
    std::string text(1, '[');
    text += std::to_string(serial);
    text += ']';
    return text;
}

std::vector<std::string> SoakInvariants::staleTexts(const std::vector<std::string>& shown, const std::unordered_set<int>& removedSerials)
{
    std::vector<std::string> stale;
    for (const std::string& text : shown) {
        // Every "[digits]" in the text is a token.
        for (size_t open = text.find('['); open != std::string::npos; open = text.find('[', open + 1)) {
            size_t close = open + 1;
            while (close < text.size() && close - open <= 9 && text[close] >= '0' && text[close] <= '9')
                ++close;
            if (close == open + 1 || close >= text.size() || text[close] != ']' || close - open > 9)
                continue;
            if (removedSerials.count(std::stoi(text.substr(open + 1, close - open - 1)))) {
                stale.push_back(text);
                break;
            }
        }
    }
    return stale;
}

}
