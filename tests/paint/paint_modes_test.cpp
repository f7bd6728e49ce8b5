// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/paint/stroke_fixture.h"

namespace wib {
namespace {

// One dab at full strength (mask 0), so the look-up index w * P / 255 is P
// itself.
class TableModes : public Stroke {
  protected:
    void SetUp() override {
        Stroke::SetUp();
        useDot(true);
        host.workspace.colours.primary = {60, 200, 10};
    }
    PackedColour paintOnce(PaintMode mode, int opacity = 255) {
        ClearImage(host.workspace.document, {100, 100, 100});
        paint.options.paintMode = static_cast<int>(mode);
        paint.options.opacity = opacity;
        line(40, 40, 40, 40);
        const Document& doc = host.workspace.document;
        return {doc.RBuffer.at(40, 40), doc.GBuffer.at(40, 40), doc.BBuffer.at(40, 40)};
    }
};

// Paint (60, 200, 10) over image (100, 100, 100), worked by hand.
TEST_F(TableModes, EachModeGivesItsFormula) {
    const struct {
        PaintMode mode;
        PackedColour expected;
    } cases[] = {
        {PaintMode::Add, {160, 255, 110}},
        // 255 - 195 * 155 / 255, 255 - 55 * 155 / 255, 255 - 245 * 155 / 255
        {PaintMode::Screen, {137, 222, 107}},
        {PaintMode::Lighten, {100, 200, 100}},
        {PaintMode::Subtract, {40, 0, 90}},  // image - paint
        {PaintMode::Difference, {40, 100, 90}},
        {PaintMode::Multiply, {23, 78, 3}},  // 6000 / 255, 20000 / 255, 1000 / 255
    };
    for (const auto& c : cases) {
        EXPECT_EQ(paintOnce(c.mode).packed(), c.expected.packed())
            << PaintModeName(static_cast<int>(c.mode));
    }
}

TEST_F(TableModes, OpacityMixesTheResultIn) {
    // Subtract gives 40, 0, 90; at opacity 128: (128 * result + 127 * 100) / 255.
    EXPECT_EQ(paintOnce(PaintMode::Subtract, 128).packed(), (PackedColour{69, 49, 94}.packed()));
}

// A 5 x 5 image brush at full strength over an image whose red rises by 2 per
// column and green by 3 per row.
class SmearDab : public Stroke {
  protected:
    void SetUp() override {
        Stroke::SetUp();
        host.workspace.brush.assign(Plane(4, 4, 0), Plane(4, 4, 0), Plane(4, 4, 0),
                                    Plane(4, 4, 255));
        host.workspace.brush.setActive(true);
        paint.options.spacing = 1000;
        paint.options.paintMode = static_cast<int>(PaintMode::Smear);
        Document& doc = host.workspace.document;
        for (int y = 0; y <= doc.height; ++y) {
            for (int x = 0; x <= doc.width; ++x) {
                SetPixel(doc, x, y,
                         {static_cast<std::uint8_t>(x * 2), static_cast<std::uint8_t>(y * 3), 0});
            }
        }
    }
    // One dab at (x, y), the last dab having been at (fromX, fromY).
    void dabFrom(int fromX, int fromY, int x, int y) {
        paint.stroke.previousDabX = static_cast<std::int16_t>(fromX);
        paint.stroke.previousDabY = static_cast<std::int16_t>(fromY);
        line(static_cast<float>(x), static_cast<float>(y), static_cast<float>(x),
             static_cast<float>(y));
    }
    // Every pixel of the dab at (cx, cy) holds the image from (dx, dy) away.
    void expectShiftedBy(int cx, int cy, int dx, int dy) {
        const Document& doc = host.workspace.document;
        for (int y = cy - 2; y <= cy + 2; ++y) {
            for (int x = cx - 2; x <= cx + 2; ++x) {
                EXPECT_EQ(doc.RBuffer.at(x, y), (x + dx) * 2) << x << ", " << y;
                EXPECT_EQ(doc.GBuffer.at(x, y), (y + dy) * 3) << x << ", " << y;
            }
        }
    }
};

TEST_F(SmearDab, DragsTheImageAlongTheStroke) {
    // Each pixel takes the image from where the last dab was; the dab is
    // walked away from it, so it reads pixels it has not written yet.
    dabFrom(29, 40, 30, 40);
    expectShiftedBy(30, 40, -1, 0);
    dabFrom(71, 40, 70, 40);
    expectShiftedBy(70, 40, 1, 0);
    dabFrom(50, 79, 50, 80);
    expectShiftedBy(50, 80, 0, -1);
    dabFrom(90, 61, 90, 60);
    expectShiftedBy(90, 60, 0, 1);
}

}  // namespace
}  // namespace wib
