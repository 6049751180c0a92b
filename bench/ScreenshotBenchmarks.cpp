// One full-screen picture, as kavelin-sim's `shot` takes it: every window
// drawn back to front at the device scale. The gallery takes one after
// another, and a live preview one after every click, of screens whose
// blurred backdrops (the wallpaper behind the panel and the overlays) have
// not changed since the picture before; the first picture of the process is
// taken before timing, so the figures are those of the pictures that follow.

#include "BenchmarkPhone.h"

#include <ViewTree.h>

#include <UIKit/UIImage.h>
#include <UIKit/UIRenderer.h>
#include <UIKit/UIScreen.h>
#include <objc/objc.h>

#include <filesystem>

namespace {

RefPtr<UIImage> takePicture()
{
    CGRect screen = UIScreen::mainScreen()->bounds();
    return UIRenderer::renderWindows(sim::ViewTree::windows(), screen.size, UIScreen::mainScreen()->scale());
}

void takePictures(benchmark::State& state)
{
    settleRunLoop();
    auto first = takePicture();
    if (!first) {
        state.SkipWithError("the screen could not be drawn");
        return;
    }
    {
        AllocationsPerIteration allocations(state);
        for (auto _ : state)
            benchmark::DoNotOptimize(takePicture());
    }
    state.counters["pixels"] = double(first->pixelWidth()) * first->pixelHeight();
}

// The lock screen with the panel over its blurred wallpaper.
void BM_Screenshot_LockScreen(benchmark::State& state)
{
    phone();
    takePictures(state);
}
BENCHMARK(BM_Screenshot_LockScreen)->Unit(benchmark::kMillisecond);

// The battery overlay open over the panel: a second blur, over the first.
void BM_Screenshot_Overlay(benchmark::State& state)
{
    NSObject* overlay = sharedInstanceOf("KVAmperoDisplayView");
    objc::send(overlay, "show");
    playOnPhone("advance 1s\n");
    if (!objc::send<bool>(overlay, "isActive")) {
        state.SkipWithError("the battery overlay did not open");
        return;
    }
    takePictures(state);
    objc::send(overlay, "hide");
    playOnPhone("advance 1s\n");
}
BENCHMARK(BM_Screenshot_Overlay)->Unit(benchmark::kMillisecond);

// Writing the lock screen's picture as a PNG file, as `shot` does after
// drawing: what a live preview adds to every picture it sends.
void BM_Screenshot_WritePNG(benchmark::State& state)
{
    settleRunLoop();
    auto picture = takePicture();
    auto file = std::filesystem::temp_directory_path() / "kavelin-bench-shot.png";
    for (auto _ : state) {
        if (auto error = picture->writePNG(file.string())) {
            state.SkipWithError(error->c_str());
            return;
        }
    }
    std::filesystem::remove(file);
}
BENCHMARK(BM_Screenshot_WritePNG)->Unit(benchmark::kMillisecond);

} // namespace
