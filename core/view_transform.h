// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

namespace wib {

// A plane affine mapping in the same terms as the toolkit's own:
// x' = m11 x + m21 y + dx, y' = m12 x + m22 y + dy.
struct ViewTransform {
    double m11 = 1, m12 = 0, m21 = 0, m22 = 1, dx = 0, dy = 0;

    std::array<double, 2> map(double x, double y) const {
        return {m11 * x + m21 * y + dx, m12 * x + m22 * y + dy};
    }
    // The mapping back; the view's mappings are never singular.
    ViewTransform inverted() const;
};

}  // namespace wib
