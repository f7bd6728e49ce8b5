// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "tests/paint/stroke_fixture.h"

namespace wib {
namespace {

PackedColour PixelAt(const Document& doc, int x, int y) {
    return {doc.RBuffer.at(x, y), doc.GBuffer.at(x, y), doc.BBuffer.at(x, y)};
}

TEST_F(Stroke, PenPressureScalesOpacityAndSizeOnlyWithTheTablet) {
    useDot(true);
    paint.options.pressureToSize = false;
    paint.options.pressureToOpacity = true;
    paint.pressure = 0.5;
    line(10, 10, 10, 10);
    EXPECT_EQ(host.workspace.document.RBuffer.at(10, 10), 0) << "a mouse has no pressure";
    paint.tabletActive = true;
    line(20, 10, 20, 10);
    // Opacity round(255 * 0.5) = 128 of black over white.
    EXPECT_EQ(host.workspace.document.RBuffer.at(20, 10), 127);

    host.workspace.brush.setActive(false);
    paint.options.pressureToOpacity = false;
    paint.options.pressureToSize = true;
    paint.options.brushSize = 21;
    RebuildBuiltinTip(paint);
    auto widthAt = [&](float pressure) {
        host.newDocument(120, 120);
        paint.pressure = pressure;
        line(60, 60, 60, 60);
        int width = 0;
        for (int x = 0; x < 120; ++x) {
            width += host.workspace.document.RBuffer.at(x, 60) != 255 ? 1 : 0;
        }
        return width;
    };
    const int full = widthAt(1.0f);
    const int half = widthAt(0.5f);
    EXPECT_GE(full, 19);
    EXPECT_LE(full, 23);
    EXPECT_GE(half, 9);
    EXPECT_LE(half, 12);
}

// Colour jitter converts back from HSV before any clamping; only the
// channels are clamped. Each dab lands on its own pixel, so the row holds
// the dab colours.
TEST_F(Stroke, ColourJitterClampsOnlyTheChannels) {
    useDot(false);
    const Document& doc = host.workspace.document;
    // (200, 100, 100): hue 0, saturation 0.5. Value jitter reaches above 1:
    // red clamps at 255 while green and blue, v * 127.5, go on past 128.
    host.workspace.colours.primary = {200, 100, 100};
    paint.options.valueJitter = 100;
    line(0, 10, 119, 10);
    int pastOne = 0;
    for (int x = 0; x < 120; ++x) {
        const PackedColour c = PixelAt(doc, x, 10);
        EXPECT_EQ(c.g, c.b) << x;
        if (c.r < 255) {
            EXPECT_LE(std::abs(2 * c.g - c.r), 1) << x;
        } else if (c.g > 128) {
            ++pastOne;
        }
    }
    EXPECT_GT(pastOne, 0);

    // (200, 150, 100): hue 30, saturation 0.5, value 200 / 255. With s up to
    // 1.5, green is v (1 - s / 2) and blue v (1 - s): blue clamps at 0 where
    // s > 1 while green falls below 100.
    host.workspace.colours.primary = {200, 150, 100};
    paint.options.valueJitter = 0;
    paint.options.saturationJitter = 100;
    line(0, 20, 119, 20);
    int pastFull = 0;
    for (int x = 0; x < 120; ++x) {
        const PackedColour c = PixelAt(doc, x, 20);
        EXPECT_EQ(c.r, 200) << x;
        if (c.b > 0) {
            EXPECT_LE(std::abs(2 * c.g - 200 - c.b), 1) << x;
        } else if (c.g < 100) {
            ++pastFull;
        }
    }
    EXPECT_GT(pastFull, 0);
}

TEST_F(Stroke, PickUpMixesTheColourUnderThePreviousPosition) {
    useDot(true);
    Document& doc = host.workspace.document;
    ClearImage(doc, {100, 50, 0});
    SetPixel(doc, 61, 60, {200, 50, 0});
    paint.options.colourPickUp = 128;
    line(60, 60, 60, 60);
    // The five samples average to (120, 50, 0); 128 parts of it and 127 of
    // black: (128 * 120) / 255, (128 * 50) / 255.
    EXPECT_EQ(PixelAt(doc, 60, 60).packed(), (PackedColour{60, 25, 0}.packed()));

    // Samples outside the selection do not count; the brush keeps its colour.
    ClearImage(doc, {100, 50, 0});
    doc.ABuffer.fill(100);
    line(30, 30, 30, 30);
    // Black at s = 100 * 255 / 255 over 100: (155 * 100) / 255.
    EXPECT_EQ(doc.RBuffer.at(30, 30), 60);
}

TEST_F(Stroke, TheSmoothBrushTrailsThePointer) {
    paint.brushType = BrushType::Smooth;
    step(0, 0, 50);
    step(1, 100, 50);
    Pixels expected;
    for (int x = 0; x <= 35; ++x) {
        expected.insert({x, 50});
    }
    EXPECT_EQ(painted(), expected) << "35 % of the way";
    step(1, 100, 50);
    for (int x = 36; x <= 58; ++x) {
        expected.insert({x, 50});
    }
    EXPECT_EQ(painted(), expected) << "then 35 % of the rest, to 57.75";
}

TEST_F(Stroke, EraseModePaintsSecondaryOrBringsBackTheSwap) {
    useDot(true);
    Document& doc = host.workspace.document;
    host.workspace.eraseMode = true;
    host.workspace.colours.secondary = {10, 20, 30};
    line(10, 10, 10, 10);
    EXPECT_EQ(PixelAt(doc, 10, 10).packed(), (PackedColour{10, 20, 30}.packed()));

    paint.options.eraseToSecondary = false;
    doc.SwapR.fill(9);
    doc.SwapG.fill(8);
    doc.SwapB.fill(7);
    line(20, 10, 20, 10);
    EXPECT_EQ(PixelAt(doc, 20, 10).packed(), (PackedColour{9, 8, 7}.packed()));
}

TEST_F(Stroke, PaperGrainShiftsThePaintColour) {
    useDot(true);
    Document& doc = host.workspace.document;
    paint.options.paperTexture = true;
    paint.paper = Plane(3, 3);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            paint.paper.at(x, y) = static_cast<std::uint8_t>(100 + 10 * x + y);
        }
    }
    host.workspace.colours.primary = {100, 250, 0};
    line(5, 6, 5, 6);
    // The grain at (5 mod 4, 6 mod 4) is 112: each channel + 112 - 128.
    EXPECT_EQ(PixelAt(doc, 5, 6).packed(), (PackedColour{84, 234, 0}.packed()));
    // Grain 131: + 3, clamped.
    host.workspace.colours.primary = {100, 254, 0};
    line(11, 9, 11, 9);
    EXPECT_EQ(PixelAt(doc, 11, 9).packed(), (PackedColour{103, 255, 3}.packed()));
}

// Neither a larger scale nor a base angle starts the dab transform on its
// own: the dab is the plain tip, pixel for pixel.
TEST_F(Stroke, ScaleAboveOneOrABaseAngleAloneLeaveTheDabAsItIs) {
    paint.options.brushSize = 15;
    paint.options.builtinBrush = static_cast<int>(BuiltinBrush::Bristle);
    RebuildBuiltinTip(paint);
    line(40, 40, 40, 40);
    const Plane plain = host.workspace.document.RBuffer;
    auto same = [&] {
        return std::memcmp(plain.data(), host.workspace.document.RBuffer.data(), plain.count()) ==
               0;
    };
    host.newDocument(120, 120);
    paint.options.brushScaleThousandths = 2000;
    line(40, 40, 40, 40);
    EXPECT_TRUE(same()) << "brush scale 2";
    host.newDocument(120, 120);
    paint.options.brushScaleThousandths = 1000;
    paint.options.baseAngle = 45;
    line(40, 40, 40, 40);
    EXPECT_TRUE(same()) << "base angle 45";
    host.newDocument(120, 120);
    paint.options.brushScaleThousandths = 500;
    line(40, 40, 40, 40);
    EXPECT_FALSE(same()) << "a reduced scale transforms";
}

}  // namespace
}  // namespace wib
