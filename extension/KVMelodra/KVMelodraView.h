#pragma once

#include <UIKit/UIView.h>

class CVMusicProvider;
class KVSettings;
class NSTimer;
class UIGestureRecognizer;
class UIImage;
class UIImageView;
class UILabel;

// The now-playing strip of the panel, just above the app launcher: artwork,
// "artist  -  song" and a play/pause glyph over a rounded translucent
// backdrop tinted with the artwork's colour. A tap opens the music overlay;
// with quick gestures on, swipes up and down skip tracks. It polls the
// player twice a second, for as long as the process lives.
class KVMelodraView final : public UIView {
    OBJC_CLASS(KVMelodraView)
public:
    KVMelodraView();

    // Places the strip above the launcher, or near the panel's bottom when
    // the launcher is hidden; `panelBounds` is the panel's bounds.
    void changeFrame(CGRect panelBounds);
    void update();
    void updateTimer(NSTimer*);

    void playPauseButtonSingleTapRecognizer(UIGestureRecognizer*);
    void showMusicDisplayViewSingleTapRecognizer(UIGestureRecognizer*);
    void swipeUpRecognizer(UIGestureRecognizer*);
    void swipeDownRecognizer(UIGestureRecognizer*);

    RefPtr<KVSettings> _settings;
    RefPtr<CVMusicProvider> _musicProvider;
    StrongId _mediaController;
    RefPtr<UIView> _backgroundView;
    RefPtr<UIImageView> _nowPlayingArtworkImageView;
    RefPtr<UILabel> _artistAndSongNameLabel;
    RefPtr<UIImageView> _playPauseButtonImageView;
    RefPtr<UIImage> _playButtonImage;
    RefPtr<UIImage> _pauseButtonImage;
};
