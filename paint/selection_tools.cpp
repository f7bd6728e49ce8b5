// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/selection_tools.h"

#include <algorithm>
#include <cmath>

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

namespace {

constexpr int kReplace = 0;
// A click within this many screen pixels of the first corner closes a polygon.
constexpr double kCloseDistance = 5.0;

}  // namespace

void SelectBoxTool::apply(Point from, Point to, const ToolModifiers& modifiers) {
    const ToolOptions& options = session().state().toolOptions;
    const int mode = SelectionModeFor(modifiers, options.selectionMode);
    const long long x0 = std::llround(std::min(from[0], to[0]));
    const long long y0 = std::llround(std::min(from[1], to[1]));
    const long long x1 = std::llround(std::max(from[0], to[0]));
    const long long y1 = std::llround(std::max(from[1], to[1]));
    ToolBox& tools = session().tools();
    if (x1 == x0 || y1 == y0) {
        if (mode == kReplace) {
            tools.runCommand("select.none", {});
        }
        return;
    }
    tools.runCommand(ellipse_ ? "select.ellipse" : "select.rectangle",
                     {{"x", x0},
                      {"y", y0},
                      {"width", x1 - x0},
                      {"height", y1 - y0},
                      {"mode", static_cast<long long>(mode)},
                      {"antialias", options.antialias ? -1LL : 0LL},
                      {"feather", options.feather}});
}

void SelectPolygonTool::add(const ToolInput& input) {
    pointer_ = ImagePoint(session_.workspace(), input);
    points_.push_back(pointer_);
}

void SelectPolygonTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    if (points_.empty()) {
        mode_ = SelectionModeFor(input.modifiers, session_.state().toolOptions.selectionMode);
        add(input);
        return;
    }
    if (freehand_) {
        return;
    }
    const auto [x, y] = ImagePoint(session_.workspace(), input);
    const double zoom = session_.workspace().view.scale();
    const double dx = (x - points_.front()[0]) * zoom;
    const double dy = (y - points_.front()[1]) * zoom;
    if (points_.size() >= 3 && std::hypot(dx, dy) <= kCloseDistance) {
        finish();
        return;
    }
    add(input);
}

void SelectPolygonTool::drag(const ToolInput& input) {
    if (points_.empty()) {
        return;
    }
    if (freehand_) {
        add(input);
    } else {
        pointer_ = ImagePoint(session_.workspace(), input);
    }
}

void SelectPolygonTool::release(const ToolInput& input) {
    if (freehand_ && !points_.empty()) {
        add(input);
        finish();
    }
}

void SelectPolygonTool::finish() {
    if (points_.empty()) {
        return;
    }
    IntegerList corners;
    corners.reserve(points_.size() * 2);
    for (const auto& [x, y] : points_) {
        corners.push_back(std::llround(x));
        corners.push_back(std::llround(y));
    }
    points_.clear();
    ToolBox& tools = session_.tools();
    if (corners.size() < 6) {
        if (mode_ == kReplace) {
            tools.runCommand("select.none", {});
        }
        return;
    }
    const ToolOptions& options = session_.state().toolOptions;
    tools.runCommand("select.polygon", {{"points", corners},
                                        {"mode", static_cast<long long>(mode_)},
                                        {"antialias", options.antialias ? -1LL : 0LL},
                                        {"feather", options.feather}});
}

ToolOverlay SelectPolygonTool::overlay() const {
    if (points_.empty()) {
        return {};
    }
    ToolOverlay overlay{ToolOverlay::Kind::Polygon, {}, false};
    for (const auto& [x, y] : points_) {
        overlay.points.push_back({static_cast<float>(x), static_cast<float>(y)});
    }
    if (!freehand_) {
        overlay.points.push_back(
            {static_cast<float>(pointer_[0]), static_cast<float>(pointer_[1])});
    }
    return overlay;
}

void MagicWandTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    const ToolOptions& options = session_.state().toolOptions;
    const auto [x, y] = PixelUnder(session_.workspace(), input);
    session_.tools().runCommand(
        "select.wand", {{"x", x},
                        {"y", y},
                        {"tolerance", static_cast<long long>(options.tolerance)},
                        {"contiguous", options.contiguous && !byColour_ ? -1LL : 0LL},
                        {"mode", static_cast<long long>(
                                     SelectionModeFor(input.modifiers, options.selectionMode))}});
}

}  // namespace wib
