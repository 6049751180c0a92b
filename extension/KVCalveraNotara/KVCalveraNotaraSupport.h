#pragma once

#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>

class CVNotificationRow;
class KVSettings;

// What the event, notification and clear-all overlays build alike.

// A centred, untouchable "HelveticaNeue-Light" 14 label that shrinks its
// text to fit the width; `lines` 0 means any number.
RefPtr<UILabel> makeOverlayLabel(const char* name, RefPtr<UIColor> textColor, int lines);

// An untouchable image view (the app icon, a notification's picture).
RefPtr<UIImageView> makeOverlayImageView(const char* name);

// The path of an image of the resource bundle, "" when there is no bundle.
std::string kavelinBundleImagePath(const char* name);

// Opens a notification as a tap on it would: on the lock screen its URL (or
// else its app) after the unlock prompt; elsewhere its app, at once.
void launchNotificationRow(CVNotificationRow*, KVSettings*);
