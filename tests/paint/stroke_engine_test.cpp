// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstring>

#include "paint/symmetry.h"
#include "tests/paint/stroke_fixture.h"

namespace wib {
namespace {

TEST_F(Stroke, PlacingThePenPaintsNothing) {
    step(0, 10, 10);
    step(0, 40, 10);
    EXPECT_TRUE(painted().empty());
    EXPECT_EQ(host.view.areaRefreshes, 0);
}

TEST_F(Stroke, SpacingCountsVisitedPositions) {
    line(0, 0, 100, 0);
    EXPECT_EQ(painted().size(), 101u) << "spacing 0: a dab at every visited position";

    host.newDocument(120, 120);
    paint.options.spacing = 5;
    line(0, 0, 100, 0);
    Pixels expected;
    for (int x = 0; x <= 100; x += 5) {
        expected.insert({x, 0});
    }
    EXPECT_EQ(painted(), expected);

    host.newDocument(120, 120);
    paint.options.relativeSpacing = true;
    paint.options.spacing = 100;
    line(0, 0, 100, 0);
    EXPECT_EQ(painted(), (Pixels{{0, 0}, {35, 0}, {70, 0}})) << "one per 35 at scale 1";

    host.newDocument(120, 120);
    paint.options.brushScaleThousandths = 500;
    line(0, 0, 100, 0);
    EXPECT_EQ(painted(), (Pixels{{0, 0}, {17, 0}, {34, 0}, {51, 0}, {68, 0}, {85, 0}}))
        << "one per 17 at scale 0.5";
}

TEST_F(Stroke, SpacingCarriesAcrossSegments) {
    paint.options.spacing = 10;
    step(0, 0, 5);
    for (int x = 3; x <= 60; x += 3) {
        step(1, static_cast<float>(x), 5);
    }
    // Segments of 3 visit 4 positions each (their start again, then 3 more);
    // the counter runs on across them, so every tenth visit gets a dab.
    EXPECT_EQ(painted(),
              (Pixels{{0, 5}, {8, 5}, {15, 5}, {23, 5}, {30, 5}, {38, 5}, {45, 5}, {53, 5}}));
}

TEST_F(Stroke, DryOutEmptiesTheBrushAtItsDivisor) {
    paint.options.dryOut = 384;
    line(0, 10, 50, 10);
    EXPECT_EQ(paint.stroke.strokeOpacity, 0.0f);
    EXPECT_TRUE(painted().empty());

    paint.options.dryOut = 0;
    line(0, 10, 50, 10);
    EXPECT_EQ(paint.stroke.strokeOpacity, 255.0f);
    EXPECT_EQ(painted().size(), 51u);
}

TEST_F(Stroke, CoordinatesAreCanvasUnitsAtTheZoom) {
    host.workspace.view.zoom = 200;
    float x = 40, y = 20;
    std::int16_t button = 0, shift = 0;
    BrushStep(host.workspace, paint, button, shift, x, y);
    EXPECT_EQ(x, 20.0f);
    EXPECT_EQ(y, 10.0f);
    step(1, 60, 20);
    EXPECT_EQ(painted(), (Pixels{{20, 10},
                                 {21, 10},
                                 {22, 10},
                                 {23, 10},
                                 {24, 10},
                                 {25, 10},
                                 {26, 10},
                                 {27, 10},
                                 {28, 10},
                                 {29, 10},
                                 {30, 10}}));
}

TEST_F(Stroke, SecondButtonPaintsTheSecondaryColour) {
    paint.options.brushSize = 3;
    RebuildBuiltinTip(paint);
    host.workspace.colours.secondary = {10, 20, 30};
    step(0, 5, 5);
    step(2, 5, 5);
    EXPECT_EQ(PackedPixel(host.workspace.document, 5, 5), 10 + 20 * 256 + 30 * 65536);
}

TEST_F(Stroke, RadialCopiesAreJoinedOnlyToThemselves) {
    host.newDocument(100, 100);
    paint.options.radialSymmetry = true;
    paint.options.radialCopies = 4;
    paint.options.symmetryCentreX = 50;
    paint.options.symmetryCentreY = 50;
    DispatchStroke(host.workspace, paint, 0, 0, 70, 20);
    DispatchStroke(host.workspace, paint, 1, 0, 90, 20);
    Pixels expected;
    for (int t = 70; t <= 90; ++t) {
        expected.insert({t, 20});        // as drawn
        expected.insert({80, t});        // turned 90 degrees
        expected.insert({100 - t, 80});  // 180
        expected.insert({20, 100 - t});  // 270
    }
    EXPECT_EQ(painted(), expected);
}

TEST_F(Stroke, MirrorsPaintEachCopyOfTheStroke) {
    paint.options.mirrorLeftRight = true;
    paint.options.mirrorTopBottom = true;
    paint.options.symmetryCentreX = 50;
    paint.options.symmetryCentreY = 50;
    DispatchStroke(host.workspace, paint, 0, 0, 10, 10);
    DispatchStroke(host.workspace, paint, 1, 0, 10, 10);
    EXPECT_EQ(painted(), (Pixels{{10, 10}, {110, 10}, {10, 110}, {110, 110}}));
}

// An image brush of 5 x 5 whose left two columns lie outside the brush.
class ImageBrush : public Stroke {
  protected:
    void SetUp() override {
        Stroke::SetUp();
        Document& doc = host.workspace.document;
        Plane alpha(4, 4, 255);
        for (int y = 0; y < 5; ++y) {
            alpha.at(0, y) = 0;
            alpha.at(1, y) = 0;
        }
        host.workspace.brush.assign(Plane(4, 4, 90), Plane(4, 4, 60), Plane(4, 4, 30),
                                    std::move(alpha));
        host.workspace.brush.setActive(true);
        host.workspace.colours.primary = {200, 100, 50};
        paint.cloneOffsetX = 3;
        paint.cloneOffsetY = 0;
        // One dab per call, however short the segment.
        paint.options.spacing = 1000;
        // Something other than one flat colour under the brush, for the modes
        // that read the image.
        ClearImage(host.workspace.document, {120, 130, 140});
        for (int x = 0; x < 40; ++x) {
            for (int y = 15; y < 26; ++y) {
                SetPixel(doc, x, y, {static_cast<std::uint8_t>(x * 6), 77, 33});
            }
        }
        for (Plane* p : {&doc.SwapR, &doc.SwapG, &doc.SwapB}) {
            p->fill(9);
        }
    }
};

TEST_F(ImageBrush, MaskOf255NeverChangesAPixelInAnyMode) {
    for (int mode = 0; mode < kPaintModeCount; ++mode) {
        for (int x = 15; x < 30; ++x) {
            host.workspace.document.RBuffer.at(x, 18) = 120;
            host.workspace.document.RBuffer.at(x, 20) = static_cast<std::uint8_t>(x * 6);
        }
        host.workspace.document.RBuffer.at(17, 20) = 120;
        host.workspace.document.RBuffer.at(18, 20) = 120;
        paint.options.paintMode = mode;
        line(20, 20, 20, 20);
        // The dab centred on 20 covers 18..22; its two left columns are outside.
        EXPECT_EQ(host.workspace.document.RBuffer.at(18, 18), 120) << "mode " << mode;
        EXPECT_EQ(host.workspace.document.RBuffer.at(17, 20), 120) << "mode " << mode;
        EXPECT_EQ(host.workspace.document.RBuffer.at(18, 20), 120) << "mode " << mode;
        const bool changes = host.workspace.document.RBuffer.at(21, 20) != 21 * 6;
        EXPECT_TRUE(changes || mode == 6) << "mode " << mode << " paints inside the brush";
    }
}

TEST_F(ImageBrush, ZeroAlphaStopsAllPaintUnlessIgnored) {
    Document& doc = host.workspace.document;
    doc.ABuffer.fill(0);
    const Plane before = doc.RBuffer;
    for (int mode = 0; mode < kPaintModeCount; ++mode) {
        paint.options.paintMode = mode;
        line(10, 10, 30, 30);
    }
    EXPECT_EQ(std::memcmp(before.data(), doc.RBuffer.data(), before.count()), 0);
    paint.options.paintMode = 0;
    paint.options.alphaUse = AlphaUse::IgnoreSelection;
    line(20, 20, 20, 20);
    EXPECT_EQ(PackedPixel(doc, 20, 20), 200 + 100 * 256 + 50 * 65536);
}

TEST_F(ImageBrush, PaintingOnAlphaRaisesTheMatte) {
    Document& doc = host.workspace.document;
    doc.ABuffer.fill(0);
    paint.options.alphaUse = AlphaUse::PaintOnAlpha;
    paint.options.opacity = 255;
    line(20, 20, 20, 20);
    EXPECT_EQ(doc.ABuffer.at(20, 20), 0) << "paint lands only where alpha was";
    doc.ABuffer.fill(100);
    line(20, 20, 20, 20);
    // s = 100 * 255 / 255 = 100; alpha = round(100 + 155 * 100 / 255) = 161
    EXPECT_EQ(doc.ABuffer.at(20, 20), 161);
}

TEST_F(ImageBrush, SourceModesTakeTheirColourFromWhereTheySay) {
    Document& doc = host.workspace.document;
    paint.options.paintMode = static_cast<int>(PaintMode::FromSwap);
    line(20, 20, 20, 20);
    EXPECT_EQ(doc.GBuffer.at(20, 20), 9);

    paint.options.paintMode = static_cast<int>(PaintMode::Pattern);
    line(30, 30, 30, 30);
    EXPECT_EQ(PackedPixel(doc, 30, 30), 90 + 60 * 256 + 30 * 65536);

    SetPixel(doc, 47, 40, {1, 2, 3});
    paint.options.paintMode = static_cast<int>(PaintMode::Clone);
    line(50, 40, 50, 40);
    EXPECT_EQ(PackedPixel(doc, 50, 40), 1 + 2 * 256 + 3 * 65536) << "clone offset 3 to the left";
}

TEST_F(Stroke, DabsAreClippedToTheImage) {
    paint.options.brushSize = 300;
    RebuildBuiltinTip(paint);
    line(-5000, -5000, 5000, 5000);
    EXPECT_EQ(painted().size(), 121u * 121u) << "the wide diagonal covers the whole image";

    host.newDocument(120, 120);
    line(1e6f, 1e6f, 1e6f + 3, 1e6f);
    EXPECT_TRUE(painted().empty());
}

}  // namespace
}  // namespace wib
