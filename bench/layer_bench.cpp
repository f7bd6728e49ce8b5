// SPDX-License-Identifier: GPL-3.0-or-later
// Layer compositing: a whole 1080p picture of eight layers against the same
// equations in doubles pixel by pixel, and a stroke's dirty rectangle against
// its time budget.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "bench/figures.h"
#include "pixel/layer_composite.h"
#include "tests/support/float_layer_blend.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kLayers = 8;

// The stack: an opaque background, then layers in a spread of modes and
// opacities, separable and whole-colour ones.
constexpr wib::BlendMode kModes[kLayers] = {wib::BlendMode::Normal,     wib::BlendMode::Multiply,
                                            wib::BlendMode::Screen,     wib::BlendMode::Overlay,
                                            wib::BlendMode::SoftLight,  wib::BlendMode::Color,
                                            wib::BlendMode::Difference, wib::BlendMode::Luminosity};
constexpr int kOpacities[kLayers] = {255, 255, 200, 128, 255, 180, 255, 90};

struct Planes {
    std::vector<std::uint8_t> r, g, b, a;
    Planes() : r(kWidth * kHeight), g(kWidth * kHeight), b(kWidth * kHeight), a(kWidth * kHeight) {}
};

std::uint8_t Hash(unsigned x, unsigned y, unsigned k) {
    unsigned h = x * 73856093u ^ y * 19349663u ^ k * 83492791u;
    h ^= h >> 13;
    h *= 0x5bd1e995u;
    return static_cast<std::uint8_t>(h >> 24);
}

// Colours are gradients with grain; above the background, coverage runs in
// diagonal bands: a third empty, a ramp of partial coverage, the rest full,
// as painted layers are somewhere empty, somewhere soft and somewhere solid.
std::vector<Planes> MakeLayers() {
    std::vector<Planes> layers(kLayers);
    for (int k = 0; k < kLayers; ++k) {
        Planes& p = layers[static_cast<std::size_t>(k)];
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const auto i = static_cast<std::size_t>(y * kWidth + x);
                const unsigned grain = Hash(x, y, k) & 31;
                p.r[i] = static_cast<std::uint8_t>((x * 255 / kWidth + grain + k * 40) & 255);
                p.g[i] = static_cast<std::uint8_t>((y * 255 / kHeight + grain + k * 70) & 255);
                p.b[i] =
                    static_cast<std::uint8_t>(((x + y) * 255 / (kWidth + kHeight) + k * 20) & 255);
                const int band = (x + 3 * y + k * 200) % 900 - 300;
                p.a[i] = k == 0 ? 255
                                : static_cast<std::uint8_t>(band < 0     ? 0
                                                            : band > 255 ? 255
                                                                         : band);
            }
        }
    }
    return layers;
}

std::vector<wib::LayerPlanes> Stack(const std::vector<Planes>& layers) {
    std::vector<wib::LayerPlanes> stack;
    for (int k = 0; k < kLayers; ++k) {
        const Planes& p = layers[static_cast<std::size_t>(k)];
        stack.push_back({p.r.data(), p.g.data(), p.b.data(), p.a.data(), kWidth, kModes[k],
                         static_cast<std::uint8_t>(kOpacities[k])});
    }
    return stack;
}

wib::CompositePlanes Target(Planes& p) {
    return {p.r.data(), p.g.data(), p.b.data(), p.a.data(), kWidth};
}

void Composite1080p(benchmark::State& state) {
    const std::vector<Planes> layers = MakeLayers();
    const std::vector<wib::LayerPlanes> stack = Stack(layers);
    Planes out;
    for (auto _ : state) {
        wib::CompositeRect(stack, Target(out), {0, 0, kWidth, kHeight});
        benchmark::DoNotOptimize(out.r.data());
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight * kLayers);
}

// The same stack row by row through the double-precision loop, built at -O2.
void FloatLoop1080p(benchmark::State& state) {
    const std::vector<Planes> layers = MakeLayers();
    Planes out;
    for (auto _ : state) {
        for (int y = 0; y < kHeight; ++y) {
            const std::size_t at = static_cast<std::size_t>(y) * kWidth;
            const wib::CompositeRow row{&out.r[at], &out.g[at], &out.b[at], &out.a[at]};
            std::fill_n(row.r, kWidth, 0);
            std::fill_n(row.g, kWidth, 0);
            std::fill_n(row.b, kWidth, 0);
            std::fill_n(row.a, kWidth, 0);
            for (int k = 0; k < kLayers; ++k) {
                const Planes& p = layers[static_cast<std::size_t>(k)];
                wib::testing::FloatCompositeLayerRow(
                    kModes[k], static_cast<std::uint8_t>(kOpacities[k]),
                    {&p.r[at], &p.g[at], &p.b[at], &p.a[at]}, row, kWidth);
            }
        }
        benchmark::DoNotOptimize(out.r.data());
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight * kLayers);
}

// One 64 x 64 recomposite, as after a dab: the rectangle moves along a
// stroke a few pixels at a time, as the paint benchmark's dabs do, wrapping
// across the picture row by row.
void DirtyRect64(benchmark::State& state) {
    const std::vector<Planes> layers = MakeLayers();
    const std::vector<wib::LayerPlanes> stack = Stack(layers);
    Planes out;
    int i = 0;
    for (auto _ : state) {
        const int x = (i * 3) % (kWidth - 64);
        const int y = ((i * 3) / (kWidth - 64) * 9) % (kHeight - 64);
        wib::CompositeRect(stack, Target(out), {x, y, 64, 64});
        benchmark::DoNotOptimize(out.r.data());
        ++i;
    }
    state.SetItemsProcessed(state.iterations() * 64 * 64 * kLayers);
}

BENCHMARK(Composite1080p)->Name("composite_8_layers_1080p")->Unit(benchmark::kMillisecond);
BENCHMARK(FloatLoop1080p)->Name("float_loop_8_layers_1080p")->Unit(benchmark::kMillisecond);
BENCHMARK(DirtyRect64)->Name("composite_dirty_rect_64px")->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("composite_8_layers_1080p", "composite_8_layers_1080p",
                               "float_loop_8_layers_1080p", 4.0);
    wib::bench::RegisterBudgetFigure("composite_dirty_rect_64px", "composite_dirty_rect_64px", 0.25,
                                     1.0);
    return wib::bench::RunAndReport(argc, argv);
}
