// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/brush_image.h"

#include <utility>

namespace wib {

namespace {

Plane MaskOf(const Plane& alpha) {
    Plane mask = alpha;
    std::uint8_t* out = mask.data();
    for (std::size_t i = 0; i < mask.count(); ++i) {
        out[i] = static_cast<std::uint8_t>(255 - out[i]);
    }
    return mask;
}

}  // namespace

void BrushImage::setAlpha(int x, int y, std::uint8_t value) {
    std::uint8_t& mask = mask_.at(x, y);
    alpha_.at(x, y) = value;
    mask = static_cast<std::uint8_t>(255 - value);
}

void BrushImage::setAlpha(Plane&& alpha) {
    Plane mask = MaskOf(alpha);
    alpha_ = std::move(alpha);
    mask_ = std::move(mask);
    setActive(active_);
}

void BrushImage::assign(Plane&& r, Plane&& g, Plane&& b, Plane&& a) {
    // The mask is the one allocation; made first, a failure changes nothing.
    Plane mask = MaskOf(a);
    R = std::move(r);
    G = std::move(g);
    B = std::move(b);
    alpha_ = std::move(a);
    mask_ = std::move(mask);
    setActive(active_);
}

void BrushImage::makeBlank(int width, int height) {
    Plane r(width - 1, height - 1, 0), g(width - 1, height - 1, 0), b(width - 1, height - 1, 0);
    Plane a(width - 1, height - 1, 0);
    assign(std::move(r), std::move(g), std::move(b), std::move(a));
}

}  // namespace wib
