#pragma once

#include <CorvLib/CVDisplayView.h>

class KVSettings;
class UIVisualEffectView;

// The music controls, opened from the panel's music strip: artwork, song
// texts, the playback buttons and the volume slider go into
// displayContainerView(), over the dark blur, and are placed by updateFrame.
class KVMusicDisplayView final : public CVDisplayView {
    OBJC_CLASS(KVMusicDisplayView)
public:
    KVMusicDisplayView();
    static KVMusicDisplayView* sharedInstance();

    void show();
    void hide();
    // Lays the overlay out for the current orientation; controls go into
    // displayContainerView() and are placed here from width() and height().
    void updateFrame();

    RefPtr<KVSettings> _settings;
    RefPtr<UIVisualEffectView> _blurEffectView;
};
