#pragma once

#include <objc/objc.h>

// The maker library's now-playing source, over the host's media controller.
class CVMusicProvider final : public NSObject {
    OBJC_CLASS(CVMusicProvider)
public:
    static CVMusicProvider* sharedInstance();
    bool nowPlayingInfoExists() const;
};
