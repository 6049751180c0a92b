#pragma once

#include <objc/objc.h>

#include <vector>

class KVSettings;

// The overlays the home button, a dark screen and full-screen alerts close
// (all but the clear-all confirmation, which only its own buttons close),
// in the order they are examined, each with the setting that lets the home
// button close it.
struct OverlayEntry {
    NSObject* (*sharedInstance)();
    bool (*homeButtonCloses)(KVSettings*);
};

const std::vector<OverlayEntry>& closableOverlays();
