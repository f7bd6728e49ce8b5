// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/drag_tool.h"

#include <algorithm>
#include <cmath>

#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

namespace {

using Point = std::array<double, 2>;

// The offsets from the start are whole pixels, so that the rounded ends keep
// the step exactly.
Point Constrain(ToolOverlay::Kind shape, Point from, Point to) {
    const double dx = to[0] - from[0];
    const double dy = to[1] - from[1];
    if (shape == ToolOverlay::Kind::Line) {
        // Within 22.5 degrees of an axis the line lies on that axis.
        const double axisSlope = std::tan(std::atan(1.0) / 2);
        if (std::abs(dy) <= std::abs(dx) * axisSlope) {
            return {from[0] + std::round(dx), from[1]};
        }
        if (std::abs(dx) <= std::abs(dy) * axisSlope) {
            return {from[0], from[1] + std::round(dy)};
        }
    }
    const double side = std::round(std::max(std::abs(dx), std::abs(dy)));
    return {from[0] + std::copysign(side, dx), from[1] + std::copysign(side, dy)};
}

}  // namespace

void DragTool::press(const ToolInput& input) {
    if (held_ || input.button != 1) {
        return;
    }
    held_ = true;
    modifiers_ = input.modifiers;
    from_ = ImagePoint(session_.workspace(), input);
    to_ = from_;
    constrained_ = false;
}

void DragTool::drag(const ToolInput& input) {
    if (held_) {
        to_ = ImagePoint(session_.workspace(), input);
        constrained_ = input.modifiers.shift;
    }
}

void DragTool::release(const ToolInput& input) {
    if (!held_) {
        return;
    }
    to_ = ImagePoint(session_.workspace(), input);
    constrained_ = input.modifiers.shift;
    held_ = false;
    apply(from_, end(), modifiers_);
}

DragTool::Point DragTool::end() const {
    return constrained_ ? Constrain(shape_, from_, to_) : to_;
}

ToolOverlay DragTool::overlay() const {
    if (!held_) {
        return {};
    }
    const Point to = end();
    return {shape_,
            {{static_cast<float>(from_[0]), static_cast<float>(from_[1])},
             {static_cast<float>(to[0]), static_cast<float>(to[1])}},
            shape_ != ToolOverlay::Kind::Line};
}

}  // namespace wib
