#pragma once

#include <UIKit/UIImage.h>

#include <string>

// A music control glyph ("MusicControls/Play", ...) from the resource
// bundle, or null when the bundle has no such image. The music strip and the
// music overlay each load their glyphs once and compare them by identity.
RefPtr<UIImage> musicControlImage(const std::string& name);

// The glyph the play/pause control should show: pause while the media
// controller plays, play otherwise.
UIImage* playbackGlyph(NSObject* mediaController, UIImage* playImage, UIImage* pauseImage);
// What a tap on the play/pause control does: the glyph on show decides,
// compared by identity; the glyph itself follows on the next refresh.
void playOrPauseForGlyph(NSObject* mediaController, UIImage* shownGlyph, UIImage* playImage, UIImage* pauseImage);
// One track forward (+1) or back (-1), unless already at the end that way.
void skipTrack(NSObject* mediaController, long long direction);
