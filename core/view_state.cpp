// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/view_state.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace wib {

ViewTransform ViewTransform::inverted() const {
    const double det = m11 * m22 - m12 * m21;
    ViewTransform out;
    out.m11 = m22 / det;
    out.m12 = -m12 / det;
    out.m21 = -m21 / det;
    out.m22 = m11 / det;
    out.dx = -(out.m11 * dx + out.m21 * dy);
    out.dy = -(out.m12 * dx + out.m22 * dy);
    return out;
}

double NormalisedAngle(double degrees) {
    // Adding 0 turns -0 into 0; a tiny negative angle may round up to a whole turn.
    const double turned = std::fmod(degrees, 360.0) + 0.0;
    const double positive = turned < 0 ? turned + 360.0 : turned;
    return positive >= 360.0 ? 0.0 : positive;
}

namespace {

// Cosine and sine of the view's angle, exact at the quarter turns so that a
// view turned by them keeps its pixels on whole window units.
std::array<double, 2> CosSin(double degrees) {
    const double angle = NormalisedAngle(degrees);
    if (angle == 0 || angle == 90 || angle == 180 || angle == 270) {
        constexpr std::array<std::array<double, 2>, 4> kQuarter{{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
        return kQuarter[static_cast<std::size_t>(angle / 90)];
    }
    const double radians = angle * std::numbers::pi / 180.0;
    return {std::cos(radians), std::sin(radians)};
}

// The image's corners under `t`, their smallest and largest coordinates.
struct Extent {
    double left, top, right, bottom;
};

Extent CornersUnder(const ViewTransform& t, int width, int height) {
    Extent e{1e300, 1e300, -1e300, -1e300};
    for (const auto [x, y] : {std::array<double, 2>{0, 0},
                              {double(width), 0},
                              {0, double(height)},
                              {double(width), double(height)}}) {
        const auto [wx, wy] = t.map(x, y);
        e.left = std::min(e.left, wx);
        e.top = std::min(e.top, wy);
        e.right = std::max(e.right, wx);
        e.bottom = std::max(e.bottom, wy);
    }
    return e;
}

}  // namespace

ViewTransform ViewState::imageToWindow(int width, int height) const {
    // Zoom, mirror left-right, then turn clockwise on the screen (y runs down).
    const auto [c, s] = CosSin(rotation);
    const double k = scale();
    const double flip = mirrored ? -1.0 : 1.0;
    ViewTransform t{flip * k * c, flip * k * s, -k * s, k * c, 0, 0};
    // The turned image's bounding box starts at the window's corner.
    const Extent e = CornersUnder(t, width, height);
    t.dx = -e.left;
    t.dy = -e.top;
    return t;
}

std::array<int, 2> ViewState::windowSize(int width, int height) const {
    const Extent e = CornersUnder(imageToWindow(width, height), width, height);
    // A hair's rounding error never adds a whole window unit.
    constexpr double kSlack = 1e-9;
    return {static_cast<int>(std::ceil(e.right - kSlack)),
            static_cast<int>(std::ceil(e.bottom - kSlack))};
}

}  // namespace wib
