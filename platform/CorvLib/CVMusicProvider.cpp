#include "CVMusicProvider.h"

OBJC_IMPLEMENT_CLASS(CVMusicProvider, NSObject)
{
    c.classMethod<&CVMusicProvider::sharedInstance>("sharedInstance");
    c.method<&CVMusicProvider::nowPlayingInfoExists>("nowPlayingInfoExists");
}

CVMusicProvider* CVMusicProvider::sharedInstance()
{
    static CVMusicProvider* shared = make<CVMusicProvider>().leakRef();
    return shared;
}

bool CVMusicProvider::nowPlayingInfoExists() const
{
    StrongId media = objc::send<StrongId>(objc::objc_getClass("SBMediaController"), OBJC_SEL("sharedInstance"));
    return objc::send<bool>(media, OBJC_SEL("hasTrack"));
}
