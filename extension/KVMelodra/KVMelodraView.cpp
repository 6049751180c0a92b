#include "KVMelodraView.h"

#include "KVMusicControls.h"
#include "KVMusicDisplayView.h"
#include "_KVContainerView/KVView.h"
#include "launcher/KVAppLauncherView.h"
#include "settings/KVSettings.h"

#include <CorvLib/CVMusicProvider.h>
#include <Foundation/NSString.h>
#include <Foundation/NSTimer.h>
#include <UIKit/UIFont.h>
#include <UIKit/UIImageView.h>
#include <UIKit/UILabel.h>
#include <UIKit/UISwipeGestureRecognizer.h>
#include <UIKit/UITapGestureRecognizer.h>
#include <objc/SharedInstance.h>

#include <algorithm>

OBJC_IMPLEMENT_CLASS(KVMelodraView, UIView)
{
    c.method<&KVMelodraView::changeFrame>("changeFrame:");
    c.method<&KVMelodraView::update>("update");
    c.method<&KVMelodraView::updateTimer>("updateTimer:");
    c.method<&KVMelodraView::playPauseButtonSingleTapRecognizer>("playPauseButtonSingleTapRecognizer:");
    c.method<&KVMelodraView::showMusicDisplayViewSingleTapRecognizer>("showMusicDisplayViewSingleTapRecognizer:");
    c.method<&KVMelodraView::swipeUpRecognizer>("swipeUpRecognizer:");
    c.method<&KVMelodraView::swipeDownRecognizer>("swipeDownRecognizer:");
    c.ivar<&KVMelodraView::_settings>("_settings");
    c.ivar<&KVMelodraView::_musicProvider>("_musicProvider");
    c.ivar<&KVMelodraView::_mediaController>("_mediaController");
    c.ivar<&KVMelodraView::_backgroundView>("_backgroundView");
    c.ivar<&KVMelodraView::_nowPlayingArtworkImageView>("_nowPlayingArtworkImageView");
    c.ivar<&KVMelodraView::_artistAndSongNameLabel>("_artistAndSongNameLabel");
    c.ivar<&KVMelodraView::_playPauseButtonImageView>("_playPauseButtonImageView");
}

static constexpr double stripHeight = 40;

KVMelodraView::KVMelodraView()
{
    _settings = KVSettings::sharedInstance();
    _musicProvider = CVMusicProvider::sharedInstance();
    _mediaController = objc::send<StrongId>(objc::objc_getClass("SBMediaController"), OBJC_SEL("sharedInstance"));

    setBackgroundColor(UIColor::clearColor());
    setUserInteractionEnabled(true);

    _backgroundView = UIView::create();
    _backgroundView->setName("_backgroundView");
    _backgroundView->setBackgroundColor(UIColor::blackColor());
    _backgroundView->setAlpha(0.2);
    _backgroundView->layer().setCornerRadius(5);
    _backgroundView->setClipsToBounds(true);
    _backgroundView->setUserInteractionEnabled(false);
    addSubview(_backgroundView.get());

    _nowPlayingArtworkImageView = UIImageView::create();
    _nowPlayingArtworkImageView->setName("_nowPlayingArtworkImageView");
    _nowPlayingArtworkImageView->setBackgroundColor(UIColor::blackColor());
    _nowPlayingArtworkImageView->layer().setCornerRadius(5);
    _nowPlayingArtworkImageView->setClipsToBounds(true);
    addSubview(_nowPlayingArtworkImageView.get());

    _playButtonImage = musicControlImage("MusicControls/Play");
    _pauseButtonImage = musicControlImage("MusicControls/Pause");

    _playPauseButtonImageView = make<UIImageView>(_playButtonImage);
    _playPauseButtonImageView->setName("_playPauseButtonImageView");
    _playPauseButtonImageView->setUserInteractionEnabled(true);
    _playPauseButtonImageView->addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("playPauseButtonSingleTapRecognizer:")).get());
    addSubview(_playPauseButtonImageView.get());

    _artistAndSongNameLabel = UILabel::create();
    _artistAndSongNameLabel->setName("_artistAndSongNameLabel");
    _artistAndSongNameLabel->setTextColor(UIColor::whiteColor());
    _artistAndSongNameLabel->setFont(UIFont::systemFontOfSize(11));
    _artistAndSongNameLabel->setNumberOfLines(2);
    _artistAndSongNameLabel->setTextAlignment(NSTextAlignmentCenter);
    _artistAndSongNameLabel->setUserInteractionEnabled(false);
    _artistAndSongNameLabel->setAdjustsFontSizeToFitWidth(true);
    addSubview(_artistAndSongNameLabel.get());

    addGestureRecognizer(make<UITapGestureRecognizer>(this, OBJC_SEL("showMusicDisplayViewSingleTapRecognizer:")).get());

    // Read once: turning quick gestures on or off takes a new strip.
    if (_settings->melodraQuickGesturesEnabled()) {
        auto up = make<UISwipeGestureRecognizer>(this, OBJC_SEL("swipeUpRecognizer:"));
        up->setDirection(UISwipeGestureRecognizerDirectionUp);
        addGestureRecognizer(up.get());
        auto down = make<UISwipeGestureRecognizer>(this, OBJC_SEL("swipeDownRecognizer:"));
        down->setDirection(UISwipeGestureRecognizerDirectionDown);
        addGestureRecognizer(down.get());
    }

    NSTimer::scheduledTimerWithTimeInterval(0.5, this, OBJC_SEL("updateTimer:"), nullptr, true);
}

void KVMelodraView::changeFrame(CGRect panelBounds)
{
    double p = panelBounds.size.width;
    double q = panelBounds.size.height;
    auto* panel = dynamic_cast<KVView*>(superview());
    UIView* launcher = panel ? objc::send<UIView*>(panel, OBJC_SEL("appLauncherView")) : nullptr;
    double y;
    if (launcher && !launcher->isHidden())
        y = launcher->frame().origin.y - stripHeight - 10;
    else if (_settings->location() == KVPanelLocation::NotificationCenter)
        y = q - stripHeight - 0.05 * std::max(q, p);
    else
        y = q - stripHeight - 10;
    setFrame(CGRectMake(20, y, p - 40, stripHeight));

    double width = bounds().size.width;
    _backgroundView->setFrame(bounds());
    // One point higher than the glyph, as it has always been.
    _nowPlayingArtworkImageView->setFrame(CGRectMake(10, 4, 30, 30));
    _playPauseButtonImageView->setFrame(CGRectMake(width - 35, 5, 30, 30));
    double labelX = CGRectGetMaxX(_nowPlayingArtworkImageView->frame()) + 5;
    _artistAndSongNameLabel->setFrame(CGRectMake(labelX, 0, width - 2 * labelX, stripHeight));
}

void KVMelodraView::update()
{
    if (!_musicProvider->nowPlayingInfoExists())
        return;
    _artistAndSongNameLabel->setText(NSString::format("%s  -  %s", _musicProvider->nowPlayingArtistName().c_str(), _musicProvider->nowPlayingSongName().c_str()));
    _nowPlayingArtworkImageView->setImage(_musicProvider->nowPlayingArtworkImage());
    UIImage* artwork = _nowPlayingArtworkImageView->image();
    if (artwork && _settings->autoColorMelodraSectionEnabled())
        _backgroundView->setBackgroundColor(artwork->mergedColor());
    else
        _backgroundView->setBackgroundColor(UIColor::blackColor());
}

void KVMelodraView::updateTimer(NSTimer*)
{
    UIImage* glyph = playbackGlyph(_mediaController.get(), _playButtonImage.get(), _pauseButtonImage.get());
    if (_playPauseButtonImageView->image() != glyph)
        _playPauseButtonImageView->setImage(glyph);
    objc::send(this, OBJC_SEL("update"));
}

void KVMelodraView::playPauseButtonSingleTapRecognizer(UIGestureRecognizer*)
{
    if (!_musicProvider->nowPlayingInfoExists())
        return;
    playOrPauseForGlyph(_mediaController.get(), _playPauseButtonImageView->image(), _playButtonImage.get(), _pauseButtonImage.get());
}

void KVMelodraView::showMusicDisplayViewSingleTapRecognizer(UIGestureRecognizer*)
{
    if (_settings->melodraOverlayEnabled())
        objc::send(objc::sharedInstance<KVMusicDisplayView>(), OBJC_SEL("show"));
}

void KVMelodraView::swipeUpRecognizer(UIGestureRecognizer*)
{
    skipTrack(_mediaController.get(), 1);
}

void KVMelodraView::swipeDownRecognizer(UIGestureRecognizer*)
{
    skipTrack(_mediaController.get(), -1);
}
