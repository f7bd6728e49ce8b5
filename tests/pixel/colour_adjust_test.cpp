// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "pixel/colour_adjust.h"

namespace wib {
namespace {

// num / den rounded to nearest, halves to even, in whole numbers only.
int RoundRatio(int num, int den) {
    const int q = num / den, r = num % den;
    if (2 * r > den || (2 * r == den && q % 2 == 1)) {
        return q + 1;
    }
    return q;
}

TEST(ColourAdjust, PosterizeRoundsTwiceHalvesToEven) {
    for (const int levels : {2, 3, 4, 5, 7, 16, 86, 255}) {
        const ChannelLut lut = PosterizeLut(levels);
        for (int v = 0; v < 256; ++v) {
            const int step = RoundRatio(v * (levels - 1), 255);
            EXPECT_EQ(lut[v], RoundRatio(step * 255, levels - 1)) << levels << " " << v;
        }
    }
    // Three levels: 255 / 2 = 127.5 is a tie and goes to 128.
    EXPECT_EQ(PosterizeLut(3)[100], 128);
    // 86 levels: v = 3 gives 255 / 255 steps = exactly 1 step of 3.
    EXPECT_EQ(PosterizeLut(86)[3], 3);
}

TEST(ColourAdjust, GreyAddsHalfBeforeDividing) {
    EXPECT_EQ(GreyOf(0, 1, 0), 1);  // 587 + 500 reaches 1000
    EXPECT_EQ(GreyOf(1, 0, 0), 0);  // 299 + 500 does not
    EXPECT_EQ(GreyOf(0, 0, 4), 0);  // 456 + 500
    EXPECT_EQ(GreyOf(0, 0, 5), 1);  // 570 + 500
    EXPECT_EQ(GreyOf(255, 255, 255), 255);
    std::uint8_t r[] = {10, 0}, g[] = {200, 1}, b[] = {77, 0};
    std::uint8_t o[3][2] = {};
    GreyscaleRow({r, g, b}, {o[0], o[1], o[2]}, 2);
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(o[c][0], 129);  // 2990 + 117400 + 8778 + 500 = 129668
        EXPECT_EQ(o[c][1], 1);
    }
    ThresholdRow({r, g, b}, {o[0], o[1], o[2]}, 129, 2);
    EXPECT_EQ(o[0][0], 255) << "a grey equal to the level is white";
    EXPECT_EQ(o[2][1], 0);
}

TEST(ColourAdjust, TablesForToneAndContrast) {
    const ChannelLut same = BrightnessContrastLut(0, 0);
    const ChannelLut levels = LevelsLut(0, 255, 1.0);
    const ChannelLut curves = CurvesLut(64, 128, 192);
    for (int v = 0; v < 256; ++v) {
        EXPECT_EQ(same[v], v);
        EXPECT_EQ(levels[v], v);
        EXPECT_EQ(curves[v], v);
        EXPECT_EQ(InvertLut()[v], 255 - v);
    }
    EXPECT_EQ(BrightnessContrastLut(10, 0)[250], 255);
    EXPECT_EQ(BrightnessContrastLut(0, 100)[100], 72);  // (100 - 127.5) 2 + 127.5 = 72.5
    EXPECT_EQ(BrightnessContrastLut(0, -100)[3], 128);  // all to 127.5, a tie
    const ChannelLut stretch = LevelsLut(50, 200, 1.0);
    EXPECT_EQ(stretch[40], 0);
    EXPECT_EQ(stretch[125], 128);  // 255 x 75 / 150 = 127.5
    EXPECT_EQ(stretch[210], 255);
    EXPECT_EQ(GammaLut(2.0)[64], 128);  // 255 sqrt(64 / 255) = 127.75
    EXPECT_EQ(GammaLut(0.5)[128], 64);  // 255 (128 / 255)^2 = 64.25
    const ChannelLut bent = CurvesLut(64, 200, 192);
    EXPECT_EQ(bent[96], 132);   // halfway from (64, 64) to (128, 200)
    EXPECT_EQ(bent[160], 196);  // halfway from (128, 200) to (192, 192)
}

TEST(ColourAdjust, EqualizeSpreadsTheCumulativeCount) {
    Histogram h{};
    h[10] = 1;
    h[20] = 1;
    h[30] = 2;
    const ChannelLut lut = EqualizeLut(h);
    EXPECT_EQ(lut[10], 0);
    EXPECT_EQ(lut[20], 85);  // (2 - 1) 255 / (4 - 1)
    EXPECT_EQ(lut[30], 255);
    Histogram flat{};
    flat[77] = 9;
    EXPECT_EQ(EqualizeLut(flat)[77], 77) << "one value stays";
    Histogram counted{};
    const std::uint8_t row[] = {5, 5, 9};
    AddToHistogram(row, 3, counted);
    EXPECT_EQ(counted[5], 2u);
    EXPECT_EQ(counted[9], 1u);
}

TEST(ColourAdjust, ChannelMixAndTones) {
    std::uint8_t r[] = {255, 40}, g[] = {255, 80}, b[] = {255, 120};
    std::uint8_t o[3][2] = {};
    ChannelMixRow({r, g, b}, {o[0], o[1], o[2]}, kSepiaMatrix, 2);
    EXPECT_EQ(o[0][0], 255);
    EXPECT_EQ(o[2][0], 237);  // 93% of 255 = 237.15
    EXPECT_EQ(o[1][1], 90);   // (35 x 40 + 69 x 80 + 17 x 120) / 100 = 89.6
    const ChannelMatrix swapRedBlue{{{0, 0, 100}, {0, 100, 0}, {-100, 0, 0}}};
    ChannelMixRow({r, g, b}, {o[0], o[1], o[2]}, swapRedBlue, 2);
    EXPECT_EQ(o[0][1], 120);
    EXPECT_EQ(o[1][1], 80);
    EXPECT_EQ(o[2][1], 0) << "negative sums clamp";

    // Shadow (10, 20, 30), mid (110, 120, 130), highlight (237, 247, 255).
    const ToneLuts tones = TritoneLuts(10 + 256 * 20 + 65536 * 30, 110 + 256 * 120 + 65536 * 130,
                                       237 + 256 * 247 + 65536 * 255);
    EXPECT_EQ(tones.r[0], 10);
    EXPECT_EQ(tones.g[64], 70);
    EXPECT_EQ(tones.b[128], 130);
    EXPECT_EQ(tones.r[255], 237);
    std::uint8_t grey[] = {128};
    std::uint8_t t[3][1] = {};
    ToneRow({grey, grey, grey}, {t[0], t[1], t[2]}, tones, 1);
    EXPECT_EQ(t[0][0], 110);
    EXPECT_EQ(t[2][0], 130);
}

TEST(ColourAdjust, HueSaturationLightness) {
    std::uint8_t r[] = {255, 200, 30}, g[] = {0, 100, 60}, b[] = {0, 50, 90};
    std::uint8_t o[3][3] = {};
    const auto run = [&](double hue, int saturation, int lightness) {
        HueSaturationLightnessRow({r, g, b}, {o[0], o[1], o[2]}, hue, saturation, lightness, 3);
    };
    run(0, 0, 0);
    for (int x = 0; x < 3; ++x) {
        EXPECT_EQ(o[0][x], r[x]);
        EXPECT_EQ(o[1][x], g[x]);
        EXPECT_EQ(o[2][x], b[x]);
    }
    run(120, 0, 0);
    EXPECT_EQ(o[0][0], 0);
    EXPECT_EQ(o[1][0], 255) << "red turned a third of the way round is green";
    run(-120, 0, 0);
    EXPECT_EQ(o[2][0], 255) << "and the other way blue";
    run(0, -100, 0);
    EXPECT_EQ(o[0][1], 200);
    EXPECT_EQ(o[2][1], 200) << "no saturation leaves the value as grey";
    run(0, 0, 100);
    EXPECT_EQ(o[1][2], 255);
    run(0, 0, -50);
    EXPECT_EQ(o[0][0], 128);  // halfway to black: 127.5
}

}  // namespace
}  // namespace wib
