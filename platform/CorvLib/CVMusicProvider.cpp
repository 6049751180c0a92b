#include "CVMusicProvider.h"

#include <UIKit/UIImage.h>

OBJC_IMPLEMENT_CLASS(CVMusicProvider, NSObject)
{
    c.classMethod<&CVMusicProvider::sharedInstance>("sharedInstance");
    c.method<&CVMusicProvider::nowPlayingInfoExists>("nowPlayingInfoExists");
    c.method<&CVMusicProvider::nowPlayingArtistName>("nowPlayingArtistName");
    c.method<&CVMusicProvider::nowPlayingSongName>("nowPlayingSongName");
    c.method<&CVMusicProvider::nowPlayingAlbumName>("nowPlayingAlbumName");
    c.method<&CVMusicProvider::nowPlayingArtworkImage>("nowPlayingArtworkImage");
    c.method<&CVMusicProvider::isPlaying>("isPlaying");
    c.method<&CVMusicProvider::play>("play");
    c.method<&CVMusicProvider::pause>("pause");
    c.method<&CVMusicProvider::nextTrack>("nextTrack");
    c.method<&CVMusicProvider::previousTrack>("previousTrack");
}

CVMusicProvider* CVMusicProvider::sharedInstance()
{
    static CVMusicProvider* shared = make<CVMusicProvider>().leakRef();
    return shared;
}

// Asked on every call rather than kept: a new host process (a new simulated
// host in tests) brings a new controller.
StrongId CVMusicProvider::mediaController() const
{
    return objc::send<StrongId>(objc::objc_getClass("SBMediaController"), OBJC_SEL("sharedInstance"));
}

bool CVMusicProvider::nowPlayingInfoExists() const { return objc::send<bool>(mediaController(), OBJC_SEL("hasTrack")); }

std::string CVMusicProvider::nowPlayingArtistName() const { return objc::send<std::string>(mediaController(), OBJC_SEL("nowPlayingArtist")); }

std::string CVMusicProvider::nowPlayingSongName() const { return objc::send<std::string>(mediaController(), OBJC_SEL("nowPlayingTitle")); }

std::string CVMusicProvider::nowPlayingAlbumName() const { return objc::send<std::string>(mediaController(), OBJC_SEL("nowPlayingAlbum")); }

RefPtr<UIImage> CVMusicProvider::nowPlayingArtworkImage() const
{
    return objc::send<RefPtr<UIImage>>(mediaController(), OBJC_SEL("nowPlayingArtwork"));
}

bool CVMusicProvider::isPlaying() const { return objc::send<bool>(mediaController(), OBJC_SEL("isPlaying")); }

void CVMusicProvider::play() const { objc::send<bool>(mediaController(), OBJC_SEL("play")); }

void CVMusicProvider::pause() const { objc::send<bool>(mediaController(), OBJC_SEL("pause")); }

void CVMusicProvider::nextTrack() const { objc::send<bool>(mediaController(), OBJC_SEL("changeTrack:"), 1LL); }

void CVMusicProvider::previousTrack() const { objc::send<bool>(mediaController(), OBJC_SEL("changeTrack:"), -1LL); }
