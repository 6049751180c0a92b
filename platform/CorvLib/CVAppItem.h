#pragma once

#include <UIKit/UIImageView.h>
#include <objc/objc.h>

#include <string>

// The maker library's record of an installed app: its bundle identifier,
// display name and icon, read from the host's application controller by
// name. Made with `[[CVAppItem alloc] initFromIdentifier:loadSnapshot:]`,
// which answers null for an identifier of no installed app.
class CVAppItem final : public NSObject {
    OBJC_CLASS(CVAppItem)
public:
    CVAppItem() = default;
    static RefPtr<CVAppItem> alloc() { return make<CVAppItem>(); }
    // The host keeps no app snapshots, so `loadSnapshot` leaves
    // `snapshotImage` null either way.
    RefPtr<CVAppItem> initFromIdentifier(const std::string& bundleIdentifier, bool loadSnapshot);

    const std::string& bundleIdentifier() const { return m_bundleIdentifier; }
    const std::string& displayName() const { return m_displayName; }
    // The home-screen icon, loaded once; null when the host has none.
    UIImage* iconImage() const;
    // A view showing `iconImage`, made once and kept.
    UIImageView* iconImageView() const;
    UIImage* snapshotImage() const { return nullptr; }

private:
    std::string m_bundleIdentifier;
    std::string m_displayName;
    StrongId m_application;
    mutable RefPtr<UIImage> m_iconImage;
    mutable bool m_iconLoaded { false };
    mutable RefPtr<UIImageView> m_iconImageView;
};
