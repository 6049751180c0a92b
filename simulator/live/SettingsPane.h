#pragma once

#include <nlohmann/json.hpp>

namespace sim::live {

// The extension's settings pane as the live page draws it: the items of the
// specifier plist it installs on the device, each with the value the
// preferences file holds now (absent when the file does not set it).
//   { "items": [ { "cell": "PSSwitchCell", "key": ..., "label": ..., "default": ...,
//                  "value": ..., ...every other field of the item... } ],
//     "file": "/private/var/mobile/Library/Preferences/com.Corvane.Kavelin.plist" }
// "error" says why there are no items, when there are none.
class SettingsPane {
public:
    // Reads both files through the device root.
    static nlohmann::json read();
};

}
