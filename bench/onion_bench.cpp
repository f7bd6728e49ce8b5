// SPDX-License-Identifier: GPL-3.0-or-later
// The canvas's onion skin over a whole 1920 x 1080 flat animation, three
// frames each side: the blend and the conversion the canvas draws from,
// against the time a redraw may take.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <filesystem>

#include "anim/frame_store.h"
#include "bench/figures.h"
#include "core/image_edit.h"
#include "core/workspace.h"
#include "tests/support/test_host.h"
#include "ui/onion_view.h"
#include "ui/plane_image.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kFrames = 7;

void OnionComposite(benchmark::State& state) {
    wib::testing::TestHost host;
    host.setUndoBudget(1);
    host.newDocument(kWidth, kHeight);
    wib::FrameStore store(host.workspace,
                          std::filesystem::temp_directory_path() / "wib-bench-onion-crop.tmp");
    store.CreateAnimation(kFrames, 0, false);
    // Every frame another shade, so that every neighbour differs everywhere.
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
    wib::OnionView view(host.workspace);
    view.attach(&store);
    const wib::Document& doc = host.workspace.document;
    const QRect whole(0, 0, kWidth, kHeight);
    QImage picture;
    for (auto _ : state) {
        const std::vector<wib::OnionFrame> frames = view.frames();
        const wib::LayerPixels& shown =
            view.blend(doc.RBuffer, doc.GBuffer, doc.BBuffer, nullptr, frames, whole);
        wib::PlanesToImage(shown.r, shown.g, shown.b, whole, picture);
        benchmark::DoNotOptimize(picture.constBits());
    }
}

}  // namespace

BENCHMARK(OnionComposite)->Name("onion_composite_1080p")->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    wib::bench::RegisterBudgetFigure("onion_composite_1080p", "onion_composite_1080p", 8.0, 1.0);
    return wib::bench::RunAndReport(argc, argv);
}
