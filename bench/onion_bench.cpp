// SPDX-License-Identifier: GPL-3.0-or-later
// The canvas's onion skin over a whole 1920 x 1080 flat animation, three
// frames each side, against the time a redraw may take. The figure times one
// update after a stroke: the stroke has changed a band of the current frame
// 32 rows high and as wide as the picture, and the canvas redraws the whole
// picture, as a refresh does; timed is all the onion view does for that
// redraw, giving the picture the canvas draws. The frame benchmark, beside
// it, times the same redraw when every pixel is laid over again, as after a
// change of frame or of the onion settings.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <algorithm>
#include <filesystem>
#include <thread>

#include "anim/frame_store.h"
#include "bench/figures.h"
#include "core/image_edit.h"
#include "core/workspace.h"
#include "tests/support/test_host.h"
#include "ui/onion_view.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kFrames = 7;
constexpr int kStrokeRows = 32;

// An animation whose every frame is another shade, so that every neighbour
// differs everywhere, the middle frame current, three frames shown each side.
class OnionScene {
  public:
    OnionScene() {
        host.setUndoBudget(1);
        host.newDocument(kWidth, kHeight);
        // As the program sets it at start-up.
        host.workspace.threadCount =
            static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
        store.CreateAnimation(kFrames, 0, false);
        for (int f = 0; f < kFrames; ++f) {
            store.GotoFrame(f);
            const auto v = static_cast<std::uint8_t>(30 * f);
            wib::ClearImage(host.workspace.document, {v, static_cast<std::uint8_t>(255 - v), 128});
        }
        store.GotoFrame(kFrames / 2);
        wib::OnionState& onion = host.workspace.view.onion;
        onion.shown = true;
        onion.before = 3;
        onion.after = 3;
        view.attach(&store);
    }

    // What the canvas does to redraw the whole picture.
    const QImage& redraw() {
        const wib::Document& doc = host.workspace.document;
        return view.blendFlat(doc.RBuffer, doc.GBuffer, doc.BBuffer, view.frames(),
                              QRect(0, 0, kWidth, kHeight));
    }

    // A stroke across the picture, somewhere else each time.
    void stroke(int step) {
        wib::Document& doc = host.workspace.document;
        const int top = (step * 97) % (kHeight - kStrokeRows);
        const auto ink = static_cast<std::uint8_t>(step * 37);
        for (wib::Plane* plane : {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer}) {
            for (int y = top; y < top + kStrokeRows; ++y) {
                std::fill_n(plane->row(y), kWidth, ink);
            }
        }
    }

    wib::testing::TestHost host;
    wib::FrameStore store{host.workspace,
                          std::filesystem::temp_directory_path() / "wib-bench-onion-crop.tmp"};
    wib::OnionView view{host.workspace};
};

void OnionAfterStroke(benchmark::State& state) {
    OnionScene scene;
    scene.redraw();
    int step = 0;
    for (auto _ : state) {
        state.PauseTiming();
        scene.stroke(++step);
        state.ResumeTiming();
        benchmark::DoNotOptimize(scene.redraw().constBits());
    }
}

void OnionWholeFrame(benchmark::State& state) {
    OnionScene scene;
    wib::OnionState& onion = scene.host.workspace.view.onion;
    int step = 0;
    for (auto _ : state) {
        // Another tint: every pixel is laid over again.
        onion.tintBefore.g = static_cast<std::uint8_t>(++step);
        benchmark::DoNotOptimize(scene.redraw().constBits());
    }
}

}  // namespace

BENCHMARK(OnionAfterStroke)->Name("onion_composite_1080p")->Unit(benchmark::kMillisecond);
BENCHMARK(OnionWholeFrame)->Name("onion_composite_1080p_whole")->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    wib::bench::RegisterBudgetFigure("onion_composite_1080p", "onion_composite_1080p", 8.0, 1.0);
    return wib::bench::RunAndReport(argc, argv);
}
