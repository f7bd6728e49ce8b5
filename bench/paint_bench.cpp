// SPDX-License-Identifier: GPL-3.0-or-later
// Dab compositing against the obvious per-pixel loop and against libmypaint,
// and one stroke segment against its time budget.

#include <benchmark/benchmark.h>

extern "C" {
#include <libmypaint/mypaint-fixed-tiled-surface.h>
}

#include <vector>

#include "bench/figures.h"
#include "bench/plain_dab_loop.h"
#include "paint/dab_compositor.h"
#include "paint/paint_state.h"
#include "paint/paint_surface.h"
#include "paint/stroke_engine.h"
#include "tests/support/test_host.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// Dab centres along a stroke: each a few pixels on from the last, wrapping
// across the image row by row.
double SpotX(int i) {
    return 100 + (i * 3) % (kWidth - 200);
}
double SpotY(int i) {
    return 100 + ((i * 3) / (kWidth - 200) * 9) % (kHeight - 200);
}

void Ours(benchmark::State& state, int radius) {
    wib::testing::TestHost host;
    host.setUndoBudget(0);
    host.newDocument(kWidth, kHeight);
    wib::PaintState paint;
    const wib::Plane mask = wib::TransformBrush(wib::MakeRoundBrush(2 * radius + 1, 80), 0, 1, 1);
    wib::PaintSurface surface = wib::WorkspaceSurface(host.workspace);
    int i = 0;
    for (auto _ : state) {
        const wib::Dab dab{
            &mask, SpotX(i), SpotY(i), 200, {20, 90, 160}, 0, 0, 0, static_cast<int>(mask.rows())};
        wib::CompositeDab(surface, paint, dab);
        ++i;
    }
    benchmark::DoNotOptimize(host.workspace.document.RBuffer.data());
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(mask.rows() * mask.rows()));
}

void PixelLoop(benchmark::State& state, int radius) {
    wib::testing::TestHost host;
    host.setUndoBudget(0);
    host.newDocument(kWidth, kHeight);
    wib::Document& doc = host.workspace.document;
    const wib::Plane mask = wib::TransformBrush(wib::MakeRoundBrush(2 * radius + 1, 80), 0, 1, 1);
    // The reference reads an unpadded square mask.
    const int size = static_cast<int>(mask.rows());
    std::vector<std::uint8_t> square;
    for (int y = 0; y < size; ++y) {
        square.insert(square.end(), mask.row(y), mask.row(y) + size);
    }
    const int stride = static_cast<int>(doc.RBuffer.stride());
    const std::uint8_t colour[3] = {20, 90, 160};
    int i = 0;
    for (auto _ : state) {
        const int x = static_cast<int>(SpotX(i)) - size / 2;
        const int y = static_cast<int>(SpotY(i)) - size / 2;
        const std::size_t at = static_cast<std::size_t>(y) * stride + x;
        wib::bench::PlainDabPixelLoop(doc.RBuffer.data() + at, doc.GBuffer.data() + at,
                                      doc.BBuffer.data() + at, doc.ABuffer.data() + at, stride,
                                      square.data(), size, 200, colour);
        ++i;
    }
    benchmark::DoNotOptimize(doc.RBuffer.data());
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(size) * size);
}

// Dabs libmypaint is given between begin_atomic and end_atomic: a stroke
// opens one section per pointer event, and an event lays down a run of dabs.
constexpr int kDabsPerAtomicSection = 32;

// libmypaint's fixed tiled surface painting a hard dab of the same radius; its
// dabs are queued by draw_dab and composited when the atomic section ends, so
// a section holds a stroke's batch of dabs and each dab's time includes its
// share of the section's end.
void MyPaint(benchmark::State& state, int radius) {
    MyPaintFixedTiledSurface* surface = mypaint_fixed_tiled_surface_new(kWidth, kHeight);
    MyPaintSurface* base = mypaint_fixed_tiled_surface_interface(surface);
    int i = 0;
    for (auto _ : state) {
        if (i % kDabsPerAtomicSection == 0) {
            mypaint_surface_begin_atomic(base);
        }
        mypaint_surface_draw_dab(base, static_cast<float>(SpotX(i)), static_cast<float>(SpotY(i)),
                                 static_cast<float>(radius), 0.08f, 0.35f, 0.63f, 0.8f, 0.8f, 1.0f,
                                 1.0f, 0.0f, 0.0f, 0.0f);
        ++i;
        if (i % kDabsPerAtomicSection == 0) {
            mypaint_surface_end_atomic(base, nullptr);
        }
    }
    if (i % kDabsPerAtomicSection != 0) {
        mypaint_surface_end_atomic(base, nullptr);
    }
    mypaint_surface_unref(base);
    const std::int64_t side = 2 * radius + 1;
    state.SetItemsProcessed(state.iterations() * side * side);
}

void Segment(benchmark::State& state) {
    wib::testing::TestHost host;
    host.setUndoBudget(0);
    host.newDocument(kWidth, kHeight);
    wib::PaintState paint;
    paint.options.brushSize = 64;
    wib::RebuildBuiltinTip(paint);
    float x = 200, y = 500;
    std::int16_t button = 0, shift = 0;
    wib::BrushStep(host.workspace, paint, button, shift, x, y);
    int i = 0;
    for (auto _ : state) {
        std::int16_t paintButton = 1;
        float nx = 200.0f + static_cast<float>((i * 10) % 1500);
        float ny = 500.0f;
        if (nx == 200.0f) {
            std::int16_t place = 0;
            float px = nx - 10, py = ny;
            wib::BrushStep(host.workspace, paint, place, shift, px, py);
        }
        wib::BrushStep(host.workspace, paint, paintButton, shift, nx, ny);
        ++i;
    }
}

BENCHMARK_CAPTURE(Ours, r4, 4)->Name("dab_r4");
BENCHMARK_CAPTURE(PixelLoop, r4, 4)->Name("pixel_loop_r4");
BENCHMARK_CAPTURE(MyPaint, r4, 4)->Name("mypaint_r4");
BENCHMARK_CAPTURE(Ours, r16, 16)->Name("dab_r16");
BENCHMARK_CAPTURE(PixelLoop, r16, 16)->Name("pixel_loop_r16");
BENCHMARK_CAPTURE(MyPaint, r16, 16)->Name("mypaint_r16");
BENCHMARK_CAPTURE(Ours, r64, 64)->Name("dab_r64");
BENCHMARK_CAPTURE(PixelLoop, r64, 64)->Name("pixel_loop_r64");
BENCHMARK_CAPTURE(MyPaint, r64, 64)->Name("mypaint_r64");
BENCHMARK(Segment)->Name("brushstep_segment");

}  // namespace

int main(int argc, char** argv) {
    using wib::bench::RegisterFigure;
    RegisterFigure("dab_r4", "dab_r4", "pixel_loop_r4", 2.5);
    RegisterFigure("dab_r16", "dab_r16", "pixel_loop_r16", 2.5);
    RegisterFigure("dab_r64", "dab_r64", "pixel_loop_r64", 2.5);
    RegisterFigure("dab_vs_mypaint_r4", "dab_r4", "mypaint_r4", 3.0);
    RegisterFigure("dab_vs_mypaint_r16", "dab_r16", "mypaint_r16", 3.0);
    RegisterFigure("dab_vs_mypaint_r64", "dab_r64", "mypaint_r64", 3.0);
    wib::bench::RegisterBudgetFigure("brushstep_segment", "brushstep_segment", 0.5, 1.0);
    return wib::bench::RunAndReport(argc, argv);
}
