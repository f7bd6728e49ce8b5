// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/image_edit.h"
#include "core/workspace.h"
#include "paint/paint_session.h"

namespace wib {

namespace {

// About this many image pixels between the points of a stroked ellipse.
constexpr double kEllipseStep = 2.0;
constexpr int kEllipseMinPoints = 8;

using Points = std::vector<std::array<float, 2>>;

// Strokes a shape given in image pixels as one undo step. The pen's last
// pressure is not the command's, and the canvas redraws once at the end.
void StrokeShape(PaintSession& session, Points points, bool closed) {
    Workspace& workspace = session.workspace();
    PaintState& state = session.state();
    const ImageEdit edit(workspace);
    const float zoom = workspace.view.scale();
    for (auto& [x, y] : points) {
        x *= zoom;
        y *= zoom;
    }
    const bool tablet = state.tabletActive;
    const bool suspended = state.repaintSuspended;
    state.tabletActive = false;
    state.repaintSuspended = true;
    state.stroke.spacingCounter = 0;
    StrokePoints(session, points, closed);
    state.tabletActive = tablet;
    state.repaintSuspended = suspended;
}

}  // namespace

void StrokePoints(PaintSession& session, const std::vector<std::array<float, 2>>& points,
                  bool closed) {
    if (points.empty()) {
        return;
    }
    const auto [firstX, firstY] = points.front();
    session.brushDown(firstX, firstY);
    for (std::size_t i = 1; i < points.size(); ++i) {
        session.brushMove(points[i][0], points[i][1]);
    }
    if (closed && points.size() > 2) {
        session.brushMove(firstX, firstY);
    }
    const auto [lastX, lastY] = closed ? points.front() : points.back();
    session.brushUp(lastX, lastY);
}

void DrawLine(PaintSession& session, float x0, float y0, float x1, float y1) {
    StrokeShape(session, {{x0, y0}, {x1, y1}}, false);
}

void DrawRectangle(PaintSession& session, const ShapeBox& box, bool filled) {
    if (filled) {
        Workspace& workspace = session.workspace();
        const ImageEdit edit(workspace);
        FillRectangle(workspace.document, box, workspace.colours.primary);
        return;
    }
    const auto l = static_cast<float>(box.left);
    const auto t = static_cast<float>(box.top);
    const auto r = static_cast<float>(box.right);
    const auto b = static_cast<float>(box.bottom);
    StrokeShape(session, {{l, t}, {r, t}, {r, b}, {l, b}}, true);
}

void DrawEllipse(PaintSession& session, const ShapeBox& box, bool filled) {
    if (filled) {
        Workspace& workspace = session.workspace();
        const ImageEdit edit(workspace);
        FillEllipse(workspace.document, box, workspace.colours.primary);
        return;
    }
    // Through the centres of the box's outer pixels, as the rectangle's stroke runs.
    const double cx = (box.left + box.right) / 2.0;
    const double cy = (box.top + box.bottom) / 2.0;
    const double rx = (box.right - box.left) / 2.0;
    const double ry = (box.bottom - box.top) / 2.0;
    // A multiple of four, so that the four points touching the box are on the path.
    const int quarter = std::max(
        kEllipseMinPoints / 4,
        static_cast<int>(std::ceil(std::numbers::pi * std::max(rx, ry) / (2.0 * kEllipseStep))));
    const int count = 4 * quarter;
    Points points;
    points.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        points.push_back({static_cast<float>(cx + rx * std::cos(angle)),
                          static_cast<float>(cy + ry * std::sin(angle))});
    }
    StrokeShape(session, std::move(points), true);
}

}  // namespace wib
