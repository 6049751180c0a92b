#pragma once

#include <CorvLib/CVDisplayView.h>

class CVMusicProvider;
class KVSettings;
class NSTimer;
class UIColor;
class UIGestureRecognizer;
class UIImage;
class UIImageView;
class UILabel;
class UISlider;
class UIVisualEffectView;

// The full-screen music controls, opened from the panel's music strip:
// large artwork, the song, "artist  -  album", previous / play-pause / next,
// and a volume slider between a low and a high speaker glyph, over a blur
// tinted with the artwork's colour. It polls the player twice a second for
// the life of the process, also while hidden.
class KVMusicDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVMusicDisplayView)
public:
    KVMusicDisplayView();
    static KVMusicDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the controls out for the overlay's size in the current orientation.
    void updateFrame();
    void update();
    void updateTimer(NSTimer*);

    void playPauseButtonSingleTapRecognizer(UIGestureRecognizer*);
    void nextButtonSingleTapRecognizer(UIGestureRecognizer*);
    void prevButtonSingleTapRecognizer(UIGestureRecognizer*);
    void volumeSliderValueChanged(NSObject* sender);

    RefPtr<KVSettings> _settings;
    RefPtr<UIColor> _themeColor;
    RefPtr<CVMusicProvider> _musicProvider;
    StrongId _mediaController;
    RefPtr<UIVisualEffectView> _blurEffectView;
    RefPtr<UIImageView> _nowPlayingArtworkImageView;
    RefPtr<UILabel> _songNameLabel;
    RefPtr<UILabel> _artistAndAlbumNameLabel;
    RefPtr<UIImageView> _playPauseButtonImageView;
    RefPtr<UIImage> _playButtonImage;
    RefPtr<UIImage> _pauseButtonImage;
    RefPtr<UIImageView> _prevButtonImageView;
    RefPtr<UIImageView> _nextButtonImageView;
    RefPtr<UISlider> _volumeSlider;
    RefPtr<UIImageView> _volumeMinImageView;
    RefPtr<UIImageView> _volumeMaxImageView;

private:
    RefPtr<UIImageView> addControlImageView(RefPtr<UIImage>, const char* name, const char* action = nullptr);
};
