#pragma once

#include <UIKit/UIImage.h>
#include <objc/objc.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// What is playing, and the transport controls. Every control message
// received is recorded ("play", "pause", "next", "previous").
class SBMediaController final : public NSObject {
    OBJC_CLASS(SBMediaController)
public:
    struct NowPlaying {
        std::optional<std::string> artist;
        std::optional<std::string> song;
        std::optional<std::string> album;
        std::optional<std::string> artworkColor; // "#rrggbb"
        // A PNG file on this computer, drawn as the artwork (wins over the colour).
        std::optional<std::string> artworkFile;
        int track { 1 };                         // 1-based
        int tracks { 1 };
    };

    static RefPtr<SBMediaController> sharedInstance();

    bool hasTrack() const { return m_nowPlaying.has_value(); }
    bool isPlaying() const { return m_playing; }
    bool play();
    bool pause();
    bool togglePlayPause();
    bool isFirstTrack() const { return !m_nowPlaying || m_nowPlaying->track <= 1; }
    bool isLastTrack() const { return !m_nowPlaying || m_nowPlaying->track >= m_nowPlaying->tracks; }
    // +1 the next track, -1 the previous one.
    bool changeTrack(long long direction);
    // From 0 to 1.
    double volume() const { return m_volume; }
    void setVolume(double);

    std::string nowPlayingArtist() const { return m_nowPlaying ? m_nowPlaying->artist.value_or("") : ""; }
    std::string nowPlayingTitle() const { return m_nowPlaying ? m_nowPlaying->song.value_or("") : ""; }
    std::string nowPlayingAlbum() const { return m_nowPlaying ? m_nowPlaying->album.value_or("") : ""; }
    // The album artwork at 300 by 300 points (a square of the artwork's
    // colour, named "artwork"); null when nothing plays or the track has none.
    // One image per track, so that callers may compare by identity.
    RefPtr<UIImage> nowPlayingArtwork() const;
    const std::optional<NowPlaying>& nowPlaying() const { return m_nowPlaying; }
    const std::vector<std::string>& commands() const { return m_commands; }

    // The world's own changes, which are not commands.
    void setNowPlaying(std::optional<NowPlaying>, bool playing);
    void setVolumeFromWorld(double volume) { m_volume = volume; }

    // Told after every change of what plays or whether it plays.
    void setNowPlayingDidChangeHandler(std::function<void()> handler) { m_didChange = std::move(handler); }

private:
    void nowPlayingDidChange();

    std::optional<NowPlaying> m_nowPlaying;
    bool m_playing { false };
    double m_volume { 0.5 };
    std::vector<std::string> m_commands;
    mutable RefPtr<UIImage> m_artwork;
    std::function<void()> m_didChange;
};
