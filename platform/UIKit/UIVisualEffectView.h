#pragma once

#include "BlurredBackdropCache.h"
#include "UIBlurEffect.h"
#include "UIView.h"

// A view that blurs what is behind it, as UIKit's UIVisualEffectView with a
// blur effect: the backdrop under the view is blurred (three box blurs, close
// to a Gaussian), its colours strengthened, and the style's grey laid over
// it. Subviews go into `contentView`, which is drawn sharp above the blur.
class UIVisualEffectView : public UIView {
    OBJC_CLASS(UIVisualEffectView)
public:
    UIVisualEffectView();
    explicit UIVisualEffectView(RefPtr<UIBlurEffect>);
    StrongId initWithEffect(UIBlurEffect*);

    UIBlurEffect* effect() const { return m_effect.get(); }
    void setEffect(RefPtr<UIBlurEffect> effect) { m_effect = std::move(effect); }
    UIView* contentView() const { return m_contentView.get(); }

    void drawContent(RenderContext&) const override;
    // How many times this view's backdrop was blurred, rather than reused.
    size_t blurCount() const { return m_blurredBackdrop.blurCount(); }
    void dumpProperties(nlohmann::json&) const override;

private:
    RefPtr<UIBlurEffect> m_effect;
    RefPtr<UIView> m_contentView;
    mutable BlurredBackdropCache m_blurredBackdrop;
};
