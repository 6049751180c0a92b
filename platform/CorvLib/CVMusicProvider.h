#pragma once

#include <objc/objc.h>

#include <string>

class UIImage;

// The maker library's now-playing source, over the host's media controller
// (reached by name). Texts are empty and the artwork null while nothing plays.
class CVMusicProvider final : public NSObject {
    OBJC_CLASS(CVMusicProvider)
public:
    static CVMusicProvider* sharedInstance();

    bool nowPlayingInfoExists() const;
    std::string nowPlayingArtistName() const;
    std::string nowPlayingSongName() const;
    std::string nowPlayingAlbumName() const;
    // The same image object for as long as the track's artwork does not
    // change, so that callers can compare by identity.
    RefPtr<UIImage> nowPlayingArtworkImage() const;
    bool isPlaying() const;

    // Commands, passed on to the media controller.
    void play() const;
    void pause() const;
    void nextTrack() const;
    void previousTrack() const;

private:
    StrongId mediaController() const;
};
