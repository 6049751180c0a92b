#include "KVMusicDisplayView.h"

#include "KVMusicControls.h"
#include "overlays/KVOverlaySupport.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVMusicProvider.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimer.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UISlider.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <UIKit/UIVisualEffectView.h>

KV_ROOT_WINDOW_CAPTURE("KVMelodra/KVMusicDisplayView", 48)

OBJC_IMPLEMENT_CLASS(KVMusicDisplayView, CVDisplayView)
{
    c.classMethod<&KVMusicDisplayView::sharedInstance>("sharedInstance");
    c.method<&KVMusicDisplayView::show>("show");
    c.method<&KVMusicDisplayView::hide>("hide");
    c.method<&KVMusicDisplayView::updateFrame>("updateFrame");
    c.method<&KVMusicDisplayView::update>("update");
    c.method<&KVMusicDisplayView::updateTimer>("updateTimer:");
    c.method<&KVMusicDisplayView::playPauseButtonSingleTapRecognizer>("playPauseButtonSingleTapRecognizer:");
    c.method<&KVMusicDisplayView::nextButtonSingleTapRecognizer>("nextButtonSingleTapRecognizer:");
    c.method<&KVMusicDisplayView::prevButtonSingleTapRecognizer>("prevButtonSingleTapRecognizer:");
    c.method<&KVMusicDisplayView::volumeSliderValueChanged>("volumeSliderValueChanged:");
    c.ivar<&KVMusicDisplayView::_settings>("_settings");
    c.ivar<&KVMusicDisplayView::_musicProvider>("_musicProvider");
    c.ivar<&KVMusicDisplayView::_mediaController>("_mediaController");
    c.ivar<&KVMusicDisplayView::_nowPlayingArtworkImageView>("_nowPlayingArtworkImageView");
    c.ivar<&KVMusicDisplayView::_songNameLabel>("_songNameLabel");
    c.ivar<&KVMusicDisplayView::_artistAndAlbumNameLabel>("_artistAndAlbumNameLabel");
    c.ivar<&KVMusicDisplayView::_playPauseButtonImageView>("_playPauseButtonImageView");
    c.ivar<&KVMusicDisplayView::_volumeSlider>("_volumeSlider");
}

// The slider is drawn at this scale, which gives iOS's slim volume slider
// with a small thumb.
static constexpr double volumeSliderScale = 0.6;

// White centred text that shrinks to fit and lets taps through.
static RefPtr<UILabel> addCenteredLabel(UIView* container, const char* name, RefPtr<UIFont> font, int lines)
{
    auto label = UILabel::create();
    label->setName(name);
    label->setTextColor(UIColor::whiteColor());
    label->setFont(std::move(font));
    label->setNumberOfLines(lines);
    label->setTextAlignment(NSTextAlignmentCenter);
    label->setUserInteractionEnabled(false);
    label->setAdjustsFontSizeToFitWidth(true);
    container->addSubview(label.get());
    return label;
}

KVMusicDisplayView* KVMusicDisplayView::sharedInstance() { return sharedOverlayInstance<KVMusicDisplayView>(); }

RefPtr<UIImageView> KVMusicDisplayView::addControlImageView(RefPtr<UIImage> image, const char* name, const char* action)
{
    auto view = make<UIImageView>(std::move(image));
    view->setName(name);
    if (action) {
        view->setUserInteractionEnabled(true);
        view->addGestureRecognizer(make<UITapGestureRecognizer>(this, objc::sel_registerName(action)).get());
    }
    displayContainerView()->addSubview(view.get());
    return view;
}

KVMusicDisplayView::KVMusicDisplayView()
{
    attachDisplayOverlay(this, s_rootWindow.get());
    _settings = KVSettings::sharedInstance();
    _blurEffectView = addDarkBlur(displayContainerView());

    _themeColor = _settings->themeColor();
    _musicProvider = CVMusicProvider::sharedInstance();
    _mediaController = objc::send<StrongId>(objc::objc_getClass("SBMediaController"), OBJC_SEL("sharedInstance"));

    _nowPlayingArtworkImageView = addControlImageView(nullptr, "_nowPlayingArtworkImageView");
    _nowPlayingArtworkImageView->setBackgroundColor(UIColor::blackColor());
    _nowPlayingArtworkImageView->layer().setCornerRadius(15);
    _nowPlayingArtworkImageView->setClipsToBounds(true);

    _playButtonImage = musicControlImage("MusicControls/Play");
    _pauseButtonImage = musicControlImage("MusicControls/Pause");
    _playPauseButtonImageView = addControlImageView(_playButtonImage, "_playPauseButtonImageView", "playPauseButtonSingleTapRecognizer:");
    _nextButtonImageView = addControlImageView(musicControlImage("MusicControls/Next"), "_nextButtonImageView", "nextButtonSingleTapRecognizer:");
    _prevButtonImageView = addControlImageView(musicControlImage("MusicControls/Prev"), "_prevButtonImageView", "prevButtonSingleTapRecognizer:");

    _songNameLabel = addCenteredLabel(displayContainerView(), "_songNameLabel", UIFont::boldSystemFontOfSize(17), 1);
    _artistAndAlbumNameLabel = addCenteredLabel(displayContainerView(), "_artistAndAlbumNameLabel", UIFont::systemFontOfSize(15), 2);

    _volumeSlider = make<UISlider>();
    _volumeSlider->setName("_volumeSlider");
    _volumeSlider->setMinimumValue(0);
    _volumeSlider->setMaximumValue(1);
    _volumeSlider->setThumbTintColor(UIColor::whiteColor());
    _volumeSlider->setMinimumTrackTintColor(UIColor::whiteColor());
    _volumeSlider->setMaximumTrackTintColor(UIColor::whiteColor());
    _volumeSlider->setTransform(CGAffineTransformMakeScale(volumeSliderScale, volumeSliderScale));
    _volumeSlider->addTarget(this, OBJC_SEL("volumeSliderValueChanged:"), UIControlEventValueChanged);
    displayContainerView()->addSubview(_volumeSlider.get());

    _volumeMinImageView = addControlImageView(musicControlImage("MusicControls/MusicLow"), "_volumeMinImageView");
    _volumeMaxImageView = addControlImageView(musicControlImage("MusicControls/MusicHigh"), "_volumeMaxImageView");

    NSTimer::scheduledTimerWithTimeInterval(0.5, this, OBJC_SEL("updateTimer:"), nullptr, true);
}

void KVMusicDisplayView::show() { showDisplayOverlay(this, _settings.get(), &KVSettings::melodraResetLockScreenDim); }

void KVMusicDisplayView::hide() { hideDisplayOverlay(this, _settings.get(), &KVSettings::melodraResetLockScreenDim); }

void KVMusicDisplayView::updateFrame()
{
    layOutDisplayOverlay(this, _blurEffectView.get());
    double w = width();
    double h = height();
    double s = 0.06 * h;

    double artworkSide = 0.5 * h;
    _nowPlayingArtworkImageView->setFrame(CGRectMake((w - artworkSide) / 2, 0.04 * h, artworkSide, artworkSide));
    _songNameLabel->setFrame(CGRectMake(20, 0.59 * h, w - 40, 0.05 * h));
    _artistAndAlbumNameLabel->setFrame(CGRectMake(20, 0.61 * h, w - 40, 0.1 * h));

    double controlsY = 0.735 * h;
    _playPauseButtonImageView->setFrame(CGRectMake(0.5 * w - s / 2, controlsY, s, s));
    _prevButtonImageView->setFrame(CGRectMake(0.2 * w - s / 2, controlsY, s, s));
    _nextButtonImageView->setFrame(CGRectMake(0.8 * w - s / 2, controlsY, s, s));

    double volumeY = 0.86 * h;
    _volumeMinImageView->setFrame(CGRectMake(10, volumeY, s, s));
    // The right margin is 20 against the left's 10: the slider's thumb needs
    // the room at its end.
    _volumeMaxImageView->setFrame(CGRectMake(w - s - 20, volumeY, s, s));
    double sliderX = CGRectGetMaxX(_volumeMinImageView->frame()) + 5;
    double sliderWidth = _volumeMaxImageView->frame().origin.x - _volumeMinImageView->frame().origin.x - s - 20;
    // The slider is drawn at a scale: its frame is the box it covers, and its
    // bounds are that box grown by the inverse of the scale.
    _volumeSlider->setFrame(CGRectMake(sliderX, 1.005 * volumeY, sliderWidth, 0.05 * h));
}

void KVMusicDisplayView::update()
{
    if (!_musicProvider->nowPlayingInfoExists()) {
        // The slider and the speaker glyphs stay: the volume still works.
        _songNameLabel->setText("");
        _artistAndAlbumNameLabel->setText("");
        for (auto* control : { _playPauseButtonImageView.get(), _prevButtonImageView.get(), _nextButtonImageView.get() })
            control->setHidden(true);
        return;
    }
    _nowPlayingArtworkImageView->setImage(_musicProvider->nowPlayingArtworkImage());
    _songNameLabel->setText(_musicProvider->nowPlayingSongName());
    _artistAndAlbumNameLabel->setText(NSString::format("%s  -  %s", _musicProvider->nowPlayingArtistName().c_str(), _musicProvider->nowPlayingAlbumName().c_str()));
    for (auto* control : { _playPauseButtonImageView.get(), _prevButtonImageView.get(), _nextButtonImageView.get() })
        control->setHidden(false);
    UIImage* artwork = _nowPlayingArtworkImageView->image();
    if (artwork && _settings->autoColorMelodraOverlayEnabled())
        displayContainerView()->setBackgroundColor(artwork->mergedColor());
    else
        displayContainerView()->setBackgroundColor(UIColor::clearColor());
}

void KVMusicDisplayView::updateTimer(NSTimer*)
{
    UIImage* glyph = playbackGlyph(_mediaController.get(), _playButtonImage.get(), _pauseButtonImage.get());
    if (_playPauseButtonImageView->image() != glyph)
        _playPauseButtonImageView->setImage(glyph);
    _volumeSlider->setValue(static_cast<float>(objc::send<double>(_mediaController, OBJC_SEL("volume"))));
    objc::send(this, OBJC_SEL("update"));
}

void KVMusicDisplayView::playPauseButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    if (!_musicProvider->nowPlayingInfoExists())
        return;
    playOrPauseForGlyph(_mediaController.get(), _playPauseButtonImageView->image(), _playButtonImage.get(), _pauseButtonImage.get());
}

void KVMusicDisplayView::nextButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    skipTrack(_mediaController.get(), 1);
}

void KVMusicDisplayView::prevButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    skipTrack(_mediaController.get(), -1);
}

void KVMusicDisplayView::volumeSliderValueChanged(NSObject* sender)
{
    if (auto* slider = dynamic_cast<UISlider*>(sender))
        objc::send(_mediaController, OBJC_SEL("setVolume:"), static_cast<double>(slider->value()));
}
