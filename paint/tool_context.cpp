// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/tool_context.h"

#include <cmath>

#include "core/workspace.h"

namespace wib {

std::array<double, 2> ImagePoint(const Workspace& workspace, const ToolInput& input) {
    const double zoom = workspace.view.scale();
    return {input.x / zoom, input.y / zoom};
}

std::array<long long, 2> PixelCorner(const Workspace& workspace, const ToolInput& input) {
    const auto [x, y] = ImagePoint(workspace, input);
    return {std::llround(x), std::llround(y)};
}

std::array<long long, 2> PixelUnder(const Workspace& workspace, const ToolInput& input) {
    const auto [x, y] = ImagePoint(workspace, input);
    return {static_cast<long long>(std::floor(x)), static_cast<long long>(std::floor(y))};
}

int SelectionModeFor(const ToolModifiers& modifiers, int fallback) {
    constexpr int kAdd = 1, kSubtract = 2, kIntersect = 3;
    if (modifiers.shift && modifiers.alt) {
        return kIntersect;
    }
    if (modifiers.shift) {
        return kAdd;
    }
    if (modifiers.alt) {
        return kSubtract;
    }
    return fallback;
}

}  // namespace wib
