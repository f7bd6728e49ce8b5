// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/symmetry.h"

#include <algorithm>
#include <vector>

#include "core/workspace.h"
#include "paint/paint_state.h"
#include "paint/stroke_engine.h"
#include "pixel/colour.h"

namespace wib {

namespace {

struct Point {
    float x, y;
};

std::vector<Point> Copies(const BrushOptionsModel& o, float x, float y, float cx, float cy) {
    if (o.radialSymmetry) {
        const int n = std::clamp(o.radialCopies, 1, 10);
        std::vector<Point> copies;
        for (int k = 0; k < n; ++k) {
            double px = x, py = y;
            RotatePoint(px, py, cx, cy, 360.0 / n * k);
            copies.push_back({static_cast<float>(px), static_cast<float>(py)});
        }
        return copies;
    }
    const float mx = -(x - cx) + cx;
    const float my = -(y - cy) + cy;
    if (o.mirrorLeftRight && o.mirrorTopBottom) {
        return {{x, y}, {mx, y}, {x, my}, {mx, my}};
    }
    if (o.mirrorLeftRight) {
        return {{x, y}, {mx, y}};
    }
    return {{x, y}, {x, my}};
}

}  // namespace

void DispatchStroke(Workspace& workspace, PaintState& paint, std::int16_t button,
                    std::int16_t shift, float x, float y) {
    const BrushOptionsModel& o = paint.options;
    if (!o.radialSymmetry && !o.mirrorLeftRight && !o.mirrorTopBottom) {
        BrushStep(workspace, paint, button, shift, x, y);
        return;
    }
    // The centre in image pixels, from the panel's percentages of the size,
    // then in canvas-window units.
    const float zoom = workspace.view.scale();
    const float cx =
        zoom * static_cast<float>(o.symmetryCentreX * workspace.document.width) / 100.0f;
    const float cy =
        zoom * static_cast<float>(o.symmetryCentreY * workspace.document.height) / 100.0f;
    const std::vector<Point> copies = Copies(o, x, y, cx, cy);
    StrokeState& stroke = paint.stroke;
    for (std::size_t k = 0; k < copies.size(); ++k) {
        if (button > 0) {
            std::int16_t place = 0;
            float px = stroke.symmetryPreviousX[k];
            float py = stroke.symmetryPreviousY[k];
            BrushStep(workspace, paint, place, shift, px, py);
            std::int16_t paintButton = button;
            float nx = copies[k].x;
            float ny = copies[k].y;
            BrushStep(workspace, paint, paintButton, shift, nx, ny);
        }
        stroke.symmetryPreviousX[k] = copies[k].x;
        stroke.symmetryPreviousY[k] = copies[k].y;
    }
}

}  // namespace wib
