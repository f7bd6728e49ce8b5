// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// A rectangle of image pixels: its top-left pixel and its size.
struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool empty() const { return width <= 0 || height <= 0; }
};

}  // namespace wib
