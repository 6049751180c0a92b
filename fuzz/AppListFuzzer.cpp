// Feeds arbitrary bytes to the launcher as the user's app list file, then
// builds the row of icons from it: nothing may crash, and the reader's
// bounds hold whatever the file holds (identifiers none empty or padded
// with blanks, none with a line end or the ":" that starts a comment; only
// the file's first MiB read; at most maximumIcons icons).
#include "FuzzDeviceRoot.h"

#include <launcher/KVAppLauncherView.h>
#include <launcher/KVAppList.h>
#include <settings/KVSettings.h>

#include <CorvLib/CVPreferenceManager.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <UIKit/UIScrollView.h>
#include <host/SimulatedHost.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <algorithm>

namespace {

// The list is used (not the app switcher), in the shape the harness picks.
class LauncherPreferences final : public CVPreferenceManager {
public:
    std::string shape { "2" };
    StrongId valueForkey(const std::string& key, const std::string& fallback) const override
    {
        if (key == "useCustomApps")
            return StrongId(NSString::create("YES"));
        if (key == "appLauncherShape")
            return StrongId(NSString::create(shape));
        return StrongId(NSString::create(fallback));
    }
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

void checkIdentifiers(const std::vector<std::string>& identifiers)
{
    for (auto& identifier : identifiers) {
        if (identifier.empty() || isBlank(identifier.front()) || isBlank(identifier.back()))
            std::abort();
        if (identifier.find_first_of("\n:") != std::string::npos)
            std::abort();
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t length)
{
    static RefPtr<LauncherPreferences> preferences;
    static std::unique_ptr<SimulatedHost> host;
    // One launcher for the process, as the panel keeps one: every update
    // rebuilds its row. (A launcher dropped with its row would stay alive,
    // its icons' recognisers keeping it as their target.)
    static RefPtr<KVAppLauncherView> launcher;
    if (!launcher) {
        prepareFuzzDeviceRoot("applist");
        preferences = make<LauncherPreferences>();
        KVSettings::sharedInstance()->setPrefs(preferences);
        launcher = make<KVAppLauncherView>();
        launcher->changeFrame(CGRectMake(0, 0, 375, 667));
    }

    // An unbooted host answers for its installed apps and draws their icons;
    // a fresh one per input starts from the system's apps alone.
    host.reset();
    host = std::make_unique<SimulatedHost>();

    std::string_view text(reinterpret_cast<const char*>(bytes), length);
    auto data = NSData::dataWithBytes(bytes, length);
    NSFileManager::defaultManager()->createFileAtPath(KVAppList::path, data.get());

    auto identifiers = KVAppList::bundleIdentifiersFromFile();
    if (!identifiers)
        std::abort();
    checkIdentifiers(*identifiers);
    // A file past the limit reads as its first MiB, less at most the one
    // identifier the cut may have split.
    auto head = KVAppList::bundleIdentifiersFromText(text.substr(0, KVAppList::maximumFileLength));
    if (length <= KVAppList::maximumFileLength ? *identifiers != head : (head.size() - identifiers->size() > 1 || !std::equal(identifiers->begin(), identifiers->end(), head.begin())))
        std::abort();

    // The first identifier becomes an installed app, so that names of any
    // kind reach the host's icon drawing; the others stay unknown unless the
    // system has them.
    if (!identifiers->empty())
        HostWorld::shared().installApp({ identifiers->front(), identifiers->front(), "#3478f6" });
    preferences->shape = length % 2 ? "1" : "2";

    launcher->update();
    // The host lays out and runs queued work every frame; the layout queue
    // keeps its views alive until then, so a harness that never drained it
    // kept every row it ever built.
    NSRunLoop::mainRunLoop()->runPending();
    UIView::layoutPendingViews();
    if (!launcher->_scrollView || launcher->_scrollView->subviews().size() > std::min(identifiers->size(), KVAppLauncherView::maximumIcons))
        std::abort();
    return 0;
}
