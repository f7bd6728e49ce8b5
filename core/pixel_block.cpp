// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/pixel_block.h"

#include <algorithm>

#include "core/document.h"
#include "pixel/blend.h"

namespace wib {

namespace {

// The block's pixels that land inside a width x height image at (x, y), in
// block coordinates, half open.
struct Overlap {
    int x0, y0, x1, y1;
    bool empty() const { return x1 <= x0 || y1 <= y0; }
};

Overlap OverlapWithImage(const PixelBlock& block, int width, int height, int x, int y) {
    return {std::max(0, -x), std::max(0, -y), std::min(block.width(), width - x),
            std::min(block.height(), height - y)};
}

}  // namespace

PixelBlock BlockOfPlanes(const Plane& r, const Plane& g, const Plane& b, const Plane& a,
                         const AlphaBounds& box) {
    const int width = box.right - box.left + 1;
    const int height = box.bottom - box.top + 1;
    PixelBlock block;
    block.x = box.left;
    block.y = box.top;
    const Plane* from[4] = {&r, &g, &b, &a};
    Plane* to[4] = {&block.R, &block.G, &block.B, &block.A};
    for (int c = 0; c < 4; ++c) {
        *to[c] = Plane::Uninitialized(width - 1, height - 1);
        for (int y = 0; y < height; ++y) {
            const std::uint8_t* source = from[c]->row(box.top + y) + box.left;
            std::copy(source, source + width, to[c]->row(y));
        }
    }
    return block;
}

PixelBlock CopySelectedBlock(const Document& document) {
    const AlphaBounds box = SelectionBounds(document);
    if (box.empty()) {
        return {};
    }
    return BlockOfPlanes(document.RBuffer, document.GBuffer, document.BBuffer, document.ABuffer,
                         box);
}

void PlaceBlock(Document& document, const PixelBlock& block, int x, int y) {
    document.ABuffer.fill(0);
    document.AlphaBitsFlag = 255;
    const Overlap part = OverlapWithImage(block, document.width, document.height, x, y);
    if (part.empty()) {
        return;
    }
    const Plane* from[3] = {&block.R, &block.G, &block.B};
    Plane* to[3] = {&document.RBuffer, &document.GBuffer, &document.BBuffer};
    for (int by = part.y0; by < part.y1; ++by) {
        const std::uint8_t* alpha = block.A.row(by);
        for (int c = 0; c < 3; ++c) {
            const std::uint8_t* source = from[c]->row(by);
            std::uint8_t* target = to[c]->row(y + by) + x;
            for (int bx = part.x0; bx < part.x1; ++bx) {
                target[bx] = MaskMix(source[bx], target[bx], 255 - alpha[bx]);
            }
        }
        std::copy(alpha + part.x0, alpha + part.x1, document.ABuffer.row(y + by) + x + part.x0);
    }
}

void ClipToMatte(PixelBlock& block, const Plane& matte, int width, int height, int x, int y) {
    const Overlap part = OverlapWithImage(block, width, height, x, y);
    for (int by = 0; by < block.height(); ++by) {
        std::uint8_t* alpha = block.A.row(by);
        const bool rowInside = by >= part.y0 && by < part.y1;
        for (int bx = 0; bx < block.width(); ++bx) {
            const bool inside = rowInside && bx >= part.x0 && bx < part.x1;
            const int weight = inside ? matte.row(y + by)[x + bx] : 0;
            alpha[bx] = static_cast<std::uint8_t>((alpha[bx] * weight + 127) / 255);
        }
    }
}

}  // namespace wib
