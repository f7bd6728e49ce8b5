// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "pixel/layer_blend.h"
#include "tests/support/float_layer_blend.h"

namespace wib {
namespace {

// A row of pixels in four planes, straight colour and coverage.
struct Pixels {
    std::vector<std::uint8_t> r, g, b, a;

    explicit Pixels(std::size_t n = 0) : r(n), g(n), b(n), a(n) {}
    void push(int vr, int vg, int vb, int va) {
        r.push_back(static_cast<std::uint8_t>(vr));
        g.push_back(static_cast<std::uint8_t>(vg));
        b.push_back(static_cast<std::uint8_t>(vb));
        a.push_back(static_cast<std::uint8_t>(va));
    }
    int size() const { return static_cast<int>(a.size()); }
    LayerRow layer() const { return {r.data(), g.data(), b.data(), a.data()}; }
    CompositeRow target() { return {r.data(), g.data(), b.data(), a.data()}; }
};

// Composites `layer` over `below` with the kernel and with the double
// reference; fails where any channel differs by more than one.
void ExpectWithinOne(BlendMode mode, int opacity, const Pixels& layer, const Pixels& below) {
    Pixels ours = below;
    Pixels reference = below;
    const auto op = static_cast<std::uint8_t>(opacity);
    CompositeLayerRow(mode, op, layer.layer(), ours.target(), layer.size());
    testing::FloatCompositeLayerRow(mode, op, layer.layer(), reference.target(), layer.size());
    int failures = 0;
    for (std::size_t i = 0; i < layer.a.size() && failures < 5; ++i) {
        const std::array<int, 4> got = {ours.r[i], ours.g[i], ours.b[i], ours.a[i]};
        const std::array<int, 4> want = {reference.r[i], reference.g[i], reference.b[i],
                                         reference.a[i]};
        for (std::size_t c = 0; c < 4; ++c) {
            if (std::abs(got[c] - want[c]) > 1) {
                ++failures;
                ADD_FAILURE() << BlendModeName(mode) << " opacity " << opacity << " channel " << c
                              << ": layer (" << +layer.r[i] << "," << +layer.g[i] << ","
                              << +layer.b[i] << "," << +layer.a[i] << ") over (" << +below.r[i]
                              << "," << +below.g[i] << "," << +below.b[i] << "," << +below.a[i]
                              << ") gives " << got[c] << ", reference " << want[c];
            }
        }
    }
}

std::vector<BlendMode> AllModes() {
    std::vector<BlendMode> modes;
    for (int i = 0; i < kBlendModeCount; ++i) {
        modes.push_back(*BlendModeFromNumber(i));
    }
    return modes;
}

TEST(LayerBlend, NamesAndNumbersInTheirFixedOrder) {
    const char* names[] = {"normal",     "multiply",    "screen",     "overlay",    "darken",
                           "lighten",    "color-dodge", "color-burn", "hard-light", "soft-light",
                           "difference", "exclusion",   "hue",        "saturation", "color",
                           "luminosity", "add",         "subtract"};
    ASSERT_EQ(std::size(names), static_cast<std::size_t>(kBlendModeCount));
    for (int i = 0; i < kBlendModeCount; ++i) {
        const auto mode = BlendModeFromNumber(i);
        ASSERT_TRUE(mode.has_value());
        EXPECT_STREQ(BlendModeName(*mode), names[i]);
        EXPECT_EQ(BlendModeFromName(names[i]), mode);
    }
    EXPECT_FALSE(BlendModeFromNumber(-1).has_value());
    EXPECT_FALSE(BlendModeFromNumber(kBlendModeCount).has_value());
    EXPECT_FALSE(BlendModeFromName("Multiply").has_value());
    EXPECT_FALSE(BlendModeFromName("").has_value());
}

// Opaque over opaque leaves exactly B(image, paint): every pair of channel
// values, every mode.
TEST(LayerBlend, EveryChannelPairOfOpaquePixelsWithinOne) {
    Pixels layer;
    Pixels below;
    for (int p = 0; p < 256; ++p) {
        for (int i = 0; i < 256; ++i) {
            // The other channels vary too, so that the whole-colour modes
            // see more than greys.
            layer.push(p, 255 - i, (p * 7) & 255, 255);
            below.push(i, p, (i * 13) & 255, 255);
        }
    }
    for (BlendMode mode : AllModes()) {
        ExpectWithinOne(mode, 255, layer, below);
    }
}

// Coverage and opacity sampled on a grid, colours on a coarser one: the
// divisions by the result's coverage and every special case of the kernel.
TEST(LayerBlend, CoverageAndOpacityGridWithinOne) {
    const int values[] = {0, 1, 2, 17, 63, 64, 100, 127, 128, 129, 191, 200, 253, 254, 255};
    const int coverages[] = {0, 1, 2, 60, 127, 128, 200, 254, 255};
    Pixels layer;
    Pixels below;
    for (int cs : values) {
        for (int cb : values) {
            for (int as : coverages) {
                for (int ab : coverages) {
                    layer.push(cs, cb, (cs + 64) & 255, as);
                    below.push(cb, 255 - cs, (cb + 128) & 255, ab);
                }
            }
        }
    }
    for (BlendMode mode : AllModes()) {
        for (int opacity : {255, 254, 128, 3, 1}) {
            ExpectWithinOne(mode, opacity, layer, below);
        }
    }
}

TEST(LayerBlend, RandomPixelsWithinOne) {
    std::mt19937 random(1234);
    std::uniform_int_distribution<int> byte(0, 255);
    Pixels layer;
    Pixels below;
    for (int n = 0; n < 50000; ++n) {
        // Long stretches of an opaque and of a transparent composite, and
        // of a fully covering layer, where the row loops take shortcuts.
        const int ab = n < 10000 ? 255 : n < 20000 ? 0 : byte(random);
        const int as = n % 10000 < 3000 ? 255 : byte(random);
        layer.push(byte(random), byte(random), byte(random), as);
        below.push(byte(random), byte(random), byte(random), ab);
    }
    for (BlendMode mode : AllModes()) {
        ExpectWithinOne(mode, byte(random), layer, below);
    }
}

// Where both layer and composite are partly covered the kernel divides by
// the result's coverage; the rounding is to the nearest, halves up, of the
// exact quotient.
TEST(LayerBlend, NormalOverPartialCoverageRoundsTheExactQuotient) {
    std::mt19937 random(99);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> partial(1, 254);
    Pixels layer;
    Pixels below;
    for (int n = 0; n < 20000; ++n) {
        layer.push(byte(random), byte(random), byte(random), partial(random));
        below.push(byte(random), byte(random), byte(random), partial(random));
    }
    const int opacity = 201;
    Pixels ours = below;
    CompositeLayerRow(BlendMode::Normal, opacity, layer.layer(), ours.target(), layer.size());
    for (std::size_t i = 0; i < layer.a.size(); ++i) {
        // In units of 1 / (255 * 255 * 255): as = s / 255^2, ab = a / 255.
        const double s = layer.a[i] * opacity;
        const double a = below.a[i];
        const double d = 255 * s + a * (65025 - s);
        auto expected = [&](int cs, int cb) {
            return static_cast<int>(std::floor((s * 255 * cs + a * (65025 - s) * cb) / d + 0.5));
        };
        ASSERT_EQ(ours.r[i], expected(layer.r[i], below.r[i])) << i;
        ASSERT_EQ(ours.g[i], expected(layer.g[i], below.g[i])) << i;
        ASSERT_EQ(ours.b[i], expected(layer.b[i], below.b[i])) << i;
        ASSERT_EQ(ours.a[i], static_cast<int>(std::floor(d / 65025 + 0.5))) << i;
    }
}

TEST(LayerBlend, FixedResults) {
    auto one = [](BlendMode mode, int opacity, std::array<int, 4> paint, std::array<int, 4> image) {
        Pixels layer;
        Pixels below;
        layer.push(paint[0], paint[1], paint[2], paint[3]);
        below.push(image[0], image[1], image[2], image[3]);
        CompositeLayerRow(mode, static_cast<std::uint8_t>(opacity), layer.layer(), below.target(),
                          1);
        return std::array<int, 4>{below.r[0], below.g[0], below.b[0], below.a[0]};
    };
    using P = std::array<int, 4>;
    // Over nothing the layer's own colour shows, its coverage scaled.
    EXPECT_EQ(one(BlendMode::Multiply, 128, {10, 20, 30, 255}, {99, 99, 99, 0}),
              (P{10, 20, 30, 128}));
    // Opacity 0 and coverage 0 change nothing.
    EXPECT_EQ(one(BlendMode::Screen, 0, {10, 20, 30, 255}, {1, 2, 3, 4}), (P{1, 2, 3, 4}));
    EXPECT_EQ(one(BlendMode::Screen, 255, {10, 20, 30, 0}, {1, 2, 3, 4}), (P{1, 2, 3, 4}));
    // Half coverage of white over opaque black: 127.5 rounds up.
    EXPECT_EQ(one(BlendMode::Normal, 255, {255, 255, 255, 128}, {0, 0, 0, 255}),
              (P{128, 128, 128, 255}));
    // 128 * 200 / 255 = 100.39; 200 + 128 - 200 * 128 / 255 = 227.6.
    EXPECT_EQ(one(BlendMode::Multiply, 255, {128, 0, 255, 255}, {200, 200, 200, 255}),
              (P{100, 0, 200, 255}));
    EXPECT_EQ(one(BlendMode::Screen, 255, {128, 0, 255, 255}, {200, 200, 200, 255}),
              (P{228, 200, 255, 255}));
    EXPECT_EQ(one(BlendMode::Subtract, 255, {50, 250, 0, 255}, {100, 100, 100, 255}),
              (P{50, 0, 100, 255}));
    // A grey image has no saturation to give a red paint: the hue mode keeps
    // the grey; the luminosity of white on red is white.
    EXPECT_EQ(one(BlendMode::Hue, 255, {255, 0, 0, 255}, {100, 100, 100, 255}),
              (P{100, 100, 100, 255}));
    EXPECT_EQ(one(BlendMode::Luminosity, 255, {255, 255, 255, 255}, {255, 0, 0, 255}),
              (P{255, 255, 255, 255}));
    // Grey 128 in the colour mode takes red's luminosity, 0.3 * 255 = 76.5.
    const P grey = one(BlendMode::Color, 255, {128, 128, 128, 255}, {255, 0, 0, 255});
    EXPECT_NEAR(grey[0], 76.5, 0.5);
    EXPECT_EQ(grey[0], grey[1]);
    EXPECT_EQ(grey[1], grey[2]);
}

// A long row takes the whole-chunk shortcuts where it can, and a pixel alone
// takes them too; where a chunk mixes coverages each pixel takes the general
// path, which must give the same numbers.
TEST(LayerBlend, RowMatchesPixelByPixel) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    const int n = 700;
    Pixels layer;
    Pixels below;
    for (int i = 0; i < n; ++i) {
        // Stretches of an opaque composite, of a transparent layer and of a
        // fully covering layer, then anything.
        const int ab = i < 300 ? 255 : byte(random);
        const int as = i >= 300 && i < 560 ? 0 : (i < 150 ? 255 : byte(random));
        layer.push(byte(random), byte(random), byte(random), as);
        below.push(byte(random), byte(random), byte(random), ab);
    }
    for (BlendMode mode : AllModes()) {
        Pixels row = below;
        CompositeLayerRow(mode, 180, layer.layer(), row.target(), n);
        for (int i = 0; i < n; ++i) {
            const auto at = static_cast<std::size_t>(i);
            Pixels alone;
            alone.push(below.r[at], below.g[at], below.b[at], below.a[at]);
            const LayerRow source{&layer.r[at], &layer.g[at], &layer.b[at], &layer.a[at]};
            CompositeLayerRow(mode, 180, source, alone.target(), 1);
            ASSERT_EQ(alone.r[0], row.r[at]) << BlendModeName(mode) << " " << i;
            ASSERT_EQ(alone.g[0], row.g[at]) << BlendModeName(mode) << " " << i;
            ASSERT_EQ(alone.b[0], row.b[at]) << BlendModeName(mode) << " " << i;
            ASSERT_EQ(alone.a[0], row.a[at]) << BlendModeName(mode) << " " << i;
        }
    }
}

}  // namespace
}  // namespace wib
