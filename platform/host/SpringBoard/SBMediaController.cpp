#include "SBMediaController.h"

#include "../HostShared.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

OBJC_IMPLEMENT_CLASS(SBMediaController, NSObject)
{
    c.classMethod<&SBMediaController::sharedInstance>("sharedInstance");
    c.method<&SBMediaController::hasTrack>("hasTrack");
    c.method<&SBMediaController::isPlaying>("isPlaying");
    c.method<&SBMediaController::play>("play");
    c.method<&SBMediaController::pause>("pause");
    c.method<&SBMediaController::togglePlayPause>("togglePlayPause");
    c.method<&SBMediaController::isFirstTrack>("isFirstTrack");
    c.method<&SBMediaController::isLastTrack>("isLastTrack");
    c.method<&SBMediaController::changeTrack>("changeTrack:");
    c.method<&SBMediaController::volume>("volume");
    c.method<&SBMediaController::setVolume>("setVolume:");
    c.method<&SBMediaController::nowPlayingArtist>("nowPlayingArtist");
    c.method<&SBMediaController::nowPlayingTitle>("nowPlayingTitle");
    c.method<&SBMediaController::nowPlayingAlbum>("nowPlayingAlbum");
    c.method<&SBMediaController::nowPlayingArtwork>("nowPlayingArtwork");
}

RefPtr<SBMediaController> SBMediaController::sharedInstance()
{
    static auto* slot = new RefPtr<SBMediaController>();
    return host::sharedInstanceIn(*slot);
}

bool SBMediaController::play()
{
    m_commands.push_back("play");
    if (!m_nowPlaying || m_playing)
        return false;
    m_playing = true;
    nowPlayingDidChange();
    return true;
}

bool SBMediaController::pause()
{
    m_commands.push_back("pause");
    if (!m_playing)
        return false;
    m_playing = false;
    nowPlayingDidChange();
    return true;
}

bool SBMediaController::togglePlayPause() { return m_playing ? pause() : play(); }

bool SBMediaController::changeTrack(long long direction)
{
    m_commands.push_back(direction < 0 ? "previous" : "next");
    if (!m_nowPlaying || direction == 0)
        return false;
    int track = std::clamp(m_nowPlaying->track + (direction < 0 ? -1 : 1), 1, std::max(1, m_nowPlaying->tracks));
    if (track == m_nowPlaying->track)
        return false;
    m_nowPlaying->track = track;
    nowPlayingDidChange();
    return true;
}

void SBMediaController::setVolume(double volume)
{
    if (!std::isnan(volume))
        m_volume = std::clamp(volume, 0.0, 1.0);
}

RefPtr<UIImage> SBMediaController::nowPlayingArtwork() const
{
    if (!m_nowPlaying)
        return nullptr;
    if (m_artwork)
        return m_artwork;
    if (m_nowPlaying->artworkFile) {
        // Drawn into an image of its own, so that the dump calls it "artwork"
        // as it does a solid one (a decoded file is shared and keeps its name).
        if (auto picture = UIImage::imageWithContentsOfFile(*m_nowPlaying->artworkFile)) {
            m_artwork = UIImage::imageWithSize(picture->size(), picture->scale(),
                [&](cairo_t* context) { picture->drawInRect(context, { { 0, 0 }, picture->size() }); }, "artwork");
        }
    } else if (m_nowPlaying->artworkColor) {
        const std::string& hex = *m_nowPlaying->artworkColor;
        unsigned value = hex.size() == 7 && hex[0] == '#' ? static_cast<unsigned>(std::strtoul(hex.c_str() + 1, nullptr, 16)) : 0;
        auto color = UIColor::colorWithRed(((value >> 16) & 0xff) / 255.0, ((value >> 8) & 0xff) / 255.0, (value & 0xff) / 255.0, 1);
        m_artwork = UIImage::imageWithColor(*color, { 300, 300 }, 1, "artwork");
    }
    return m_artwork;
}

void SBMediaController::setNowPlaying(std::optional<NowPlaying> nowPlaying, bool playing)
{
    m_artwork = nullptr;
    m_nowPlaying = std::move(nowPlaying);
    m_playing = m_nowPlaying && playing;
    nowPlayingDidChange();
}

void SBMediaController::nowPlayingDidChange()
{
    if (m_didChange)
        m_didChange();
}
