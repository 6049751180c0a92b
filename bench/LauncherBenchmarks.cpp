// The app launcher's rebuild (every panel layout: start, rotation) from the
// user's list file, at its worst: a file past the 1 MiB the launcher reads,
// every line naming an app the phone does not have, or every line naming
// one it has (the row then stops at its 256 icons).

#include "BenchmarkPhone.h"

#include <UIKit/UIView.h>
#include <objc/objc.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

void rebuildFromList(benchmark::State& state, const std::string& lineFor0, bool numbered)
{
    auto path = std::filesystem::temp_directory_path() / "kavelin-bench-applist.txt";
    {
        std::ofstream file(path, std::ios::binary);
        for (size_t written = 0, line = 0; written < 1100 * 1024; ++line) {
            std::string text = lineFor0 + (numbered ? std::to_string(line) : "") + "\n";
            file << text;
            written += text.size();
        }
    }
    playOnPhone("prefs useCustomApps yes\nfile /private/var/mobile/Library/Preferences/com.corvane.kavelin.applist.activeapps from " + path.string() + "\n");
    // The settings are read again at the panel's next reload; ask for it now.
    objc::send(sharedInstanceOf("KVSettings"), objc::sel_registerName("reload"));
    NSObject* launcher = objc::object_getIvar(panel(), "_appLauncherView").get();
    objc::SEL update = objc::sel_registerName("update");
    for (auto _ : state) {
        objc::send(launcher, update);
        settleRunLoop();
    }
    // The row is the launcher's one subview.
    auto* view = dynamic_cast<UIView*>(launcher);
    state.counters["icons"] = view && !view->subviews().empty() ? static_cast<double>(view->subviews().front()->subviews().size()) : -1;
    playOnPhone("prefs useCustomApps no\n");
    objc::send(sharedInstanceOf("KVSettings"), objc::sel_registerName("reload"));
    std::filesystem::remove(path);
}

// 1.1 MB of distinct unknown identifiers: one read of 1 MiB, one look-up each.
void BM_Launcher_Rebuild_UnknownApps(benchmark::State& state) { rebuildFromList(state, "com.example.not.installed.", true); }
BENCHMARK(BM_Launcher_Rebuild_UnknownApps)->Unit(benchmark::kMillisecond);

// 1.1 MB of one installed app: 256 icons, then the reading stops.
void BM_Launcher_Rebuild_FullRow(benchmark::State& state) { rebuildFromList(state, "com.apple.mobilesafari", false); }
BENCHMARK(BM_Launcher_Rebuild_FullRow)->Unit(benchmark::kMillisecond);

}
