// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "paint/paint_state.h"
#include "paint/stroke_engine.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {

using Pixels = std::set<std::pair<int, int>>;

// A 120 x 120 white image and a one-pixel hard black brush laying a dab at
// every visited position.
class Stroke : public ::testing::Test {
  protected:
    void SetUp() override {
        host.newDocument(120, 120);
        host.workspace.seedRandom(1);
        // A one-pixel hard brush in black, so each dab marks exactly one pixel.
        paint.options.brushSize = 1;
        paint.options.hardness = 100;
        paint.options.relativeSpacing = false;
        paint.options.spacing = 0;
        host.workspace.colours.primary = {0, 0, 0};
        RebuildBuiltinTip(paint);
    }
    // A one-pixel image brush at full strength: each dab sets its pixel to
    // exactly what the mode gives. With `single`, one dab per line.
    void useDot(bool single) {
        host.workspace.brush.assign(Plane(0, 0), Plane(0, 0), Plane(0, 0), Plane(0, 0, 255));
        host.workspace.brush.setActive(true);
        paint.options.spacing = single ? 1000 : 0;
    }
    void step(int button, float x, float y) {
        std::int16_t b = static_cast<std::int16_t>(button), shift = 0;
        BrushStep(host.workspace, paint, b, shift, x, y);
    }
    // Each line starts as a fresh session's first stroke does, with a dab:
    // strokes themselves carry the spacing counter on.
    void line(float x0, float y0, float x1, float y1) {
        paint.stroke.spacingCounter = 0;
        step(0, x0, y0);
        step(1, x1, y1);
    }
    Pixels painted() const {
        Pixels marks;
        const Document& doc = host.workspace.document;
        for (int y = 0; y <= doc.height; ++y) {
            for (int x = 0; x <= doc.width; ++x) {
                if (doc.RBuffer.at(x, y) != 255) {
                    marks.insert({x, y});
                }
            }
        }
        return marks;
    }
    testing::TestHost host;
    PaintState paint;
};

}  // namespace wib
