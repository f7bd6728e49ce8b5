// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/transform_tool.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

namespace {

// How near a corner, in screen pixels, a press takes its handle.
constexpr double kHandleReach = 8;
constexpr double kSmallestScale = 0.01;
constexpr double kTurnStep = 15;

double Degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

}  // namespace

TransformTool::TransformTool(const CanvasToolContext& context)
    : context_(context), preview_(context.session.workspace(), context.canvas) {
    // A change of sampling in the options shows at once.
    options_ = context_.session.workspace().events.paintOptionsChanged.subscribe([this] {
        if (transforming_) {
            showPreview();
        }
    });
}

void TransformTool::showPreview() {
    spec_.sampling = static_cast<Sampling>(context_.session.state().toolOptions.sampling);
    preview_.show(spec_);
}

void TransformTool::start() {
    box_ = preview_.box();
    if (box_.empty()) {
        return;
    }
    spec_ = TransformSpec{};
    transforming_ = true;
}

void TransformTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    if (!transforming_) {
        start();
        if (!transforming_) {
            return;
        }
    }
    const double zoom = context_.session.workspace().view.scale();
    const auto [x, y] = ImagePoint(context_.session.workspace(), input);
    pressX_ = x;
    pressY_ = y;
    pressed_ = spec_;
    shift_ = input.modifiers.shift;
    const auto corners = TransformedCorners(spec_, box_);
    // On a small box the handles shrink, so that its middle still moves it.
    const double side =
        std::min(std::hypot(corners[1].x - corners[0].x, corners[1].y - corners[0].y),
                 std::hypot(corners[3].x - corners[0].x, corners[3].y - corners[0].y));
    const double reach = std::min(kHandleReach, side * zoom / 4);
    QPolygonF outline;
    grip_ = Grip::Turn;
    for (const CornerPoint& corner : corners) {
        outline << QPointF(corner.x, corner.y);
        if (std::hypot(corner.x - pressX_, corner.y - pressY_) * zoom <= reach) {
            grip_ = Grip::Scale;
        }
    }
    if (grip_ == Grip::Turn && outline.containsPoint(QPointF(pressX_, pressY_), Qt::OddEvenFill)) {
        grip_ = Grip::Move;
    }
    showPreview();
}

void TransformTool::drag(const ToolInput& input) {
    if (grip_ == Grip::None) {
        return;
    }
    const auto [x, y] = ImagePoint(context_.session.workspace(), input);
    // The centre as the drag began, and the pointer from it then and now.
    const double cx = (box_.left + box_.right + 1) / 2.0 + pressed_.dx;
    const double cy = (box_.top + box_.bottom + 1) / 2.0 + pressed_.dy;
    const double fromX = pressX_ - cx;
    const double fromY = pressY_ - cy;
    const double toX = x - cx;
    const double toY = y - cy;
    spec_ = pressed_;
    switch (grip_) {
        case Grip::Move:
            spec_.dx = pressed_.dx + std::round(x - pressX_);
            spec_.dy = pressed_.dy + std::round(y - pressY_);
            break;
        case Grip::Turn: {
            double angle =
                pressed_.angle + Degrees(std::atan2(toY, toX) - std::atan2(fromY, fromX));
            if (shift_) {
                angle = std::round(angle / kTurnStep) * kTurnStep;
            }
            spec_.angle = std::remainder(angle, 360.0);
            break;
        }
        case Grip::Scale: {
            // Measured along the box's own axes, as it is turned now.
            const double radians = pressed_.angle * std::numbers::pi / 180.0;
            const double c = std::cos(radians);
            const double s = std::sin(radians);
            const auto along = [&](double vx, double vy, bool first) {
                return first ? c * vx + s * vy : -s * vx + c * vy;
            };
            const auto ratio = [&](bool first) {
                const double from = along(fromX, fromY, first);
                return std::abs(from) < 1e-6 ? 1.0 : along(toX, toY, first) / from;
            };
            double rx = ratio(true);
            double ry = ratio(false);
            if (shift_) {
                ry = rx;
            }
            spec_.scaleX = std::max(kSmallestScale, std::abs(pressed_.scaleX * rx));
            spec_.scaleY = std::max(kSmallestScale, std::abs(pressed_.scaleY * ry));
            break;
        }
        case Grip::None:
            break;
    }
    showPreview();
}

void TransformTool::release(const ToolInput&) {
    grip_ = Grip::None;
}

void TransformTool::finish() {
    if (!transforming_) {
        return;
    }
    cancel();
    context_.session.tools().runCommand("transform.apply",
                                        {{"scale_x", spec_.scaleX},
                                         {"scale_y", spec_.scaleY},
                                         {"angle", spec_.angle},
                                         {"flip_h", spec_.flipH ? -1LL : 0LL},
                                         {"flip_v", spec_.flipV ? -1LL : 0LL},
                                         {"dx", spec_.dx},
                                         {"dy", spec_.dy},
                                         {"sampling", static_cast<long long>(spec_.sampling)}});
}

void TransformTool::cancel() {
    transforming_ = false;
    grip_ = Grip::None;
    preview_.clear();
}

void TransformTool::flipHorizontally() {
    if (!transforming_) {
        start();
    }
    if (transforming_) {
        spec_.flipH = !spec_.flipH;
        showPreview();
    }
}

void TransformTool::flipVertically() {
    if (!transforming_) {
        start();
    }
    if (transforming_) {
        spec_.flipV = !spec_.flipV;
        showPreview();
    }
}

}  // namespace wib
