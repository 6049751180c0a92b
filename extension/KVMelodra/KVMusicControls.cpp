#include "KVMusicControls.h"

#include <Foundation/NSBundle.h>

static constexpr const char* kavelinBundlePath = "/Library/Application Support/Kavelin/KavelinBundle.bundle";

RefPtr<UIImage> musicControlImage(const std::string& name)
{
    auto bundle = NSBundle::bundleWithPath(kavelinBundlePath);
    if (!bundle)
        return nullptr;
    return UIImage::imageWithContentsOfFile(bundle->pathForResource(name, "png"));
}

UIImage* playbackGlyph(NSObject* mediaController, UIImage* playImage, UIImage* pauseImage)
{
    return objc::send<bool>(mediaController, OBJC_SEL("isPlaying")) ? pauseImage : playImage;
}

void playOrPauseForGlyph(NSObject* mediaController, UIImage* shownGlyph, UIImage* playImage, UIImage* pauseImage)
{
    if (shownGlyph == playImage)
        objc::send<bool>(mediaController, OBJC_SEL("play"));
    else if (shownGlyph == pauseImage)
        objc::send<bool>(mediaController, OBJC_SEL("pause"));
}

void skipTrack(NSObject* mediaController, long long direction)
{
    bool atEnd = objc::send<bool>(mediaController, direction > 0 ? OBJC_SEL("isLastTrack") : OBJC_SEL("isFirstTrack"));
    if (!atEnd)
        objc::send<bool>(mediaController, OBJC_SEL("changeTrack:"), direction);
}
