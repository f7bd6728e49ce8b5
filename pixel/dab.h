// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// One dab over the image: the image's colour and alpha planes and the brush
// mask, all already advanced to the dab's first pixel inside the image.
// Columns past the dab whose mask is 255 may be included to fill whole
// vectors: such pixels are left exactly as they are.
struct DabBlock {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
    std::uint8_t* alpha;
    std::size_t imageStride;
    const std::uint8_t* mask;  // 0 = full strength, 255 = outside the brush
    std::size_t maskStride;
    int width;    // pixels in each row
    int height;   // rows
    int opacity;  // the stroke opacity, 0..255
    // The fade option: row j of the block is painted at
    // max(0, opacity - fade * (fadeFirstRow + j) / fadeSpan).
    int fade;
    int fadeFirstRow;
    int fadeSpan;
    std::uint8_t colour[3];  // the dab colour
    bool ignoreAlpha;        // paint regardless of the selection
    bool paintOnAlpha;       // raise the matte with the paint
};

// The paper texture under a dab: the paper plane, its size, and the paper
// row and column under the block's first pixel.
struct PaperBlock {
    const std::uint8_t* data;
    int width;
    int height;
    int firstRow;
    int firstColumn;
};

// The opacity of row j of a block, after the fade option.
int DabRowOpacity(const DabBlock& block, int j);

// Plain paint of one dab. Per pixel, with integer division:
//   m = mask; w = 255 - m; s = w * opacity / 255;
//   unless ignoreAlpha: s = alpha * s / 255;
//   each channel: D = (s * P + (255 - s) * D) / 255;
//   with paintOnAlpha: alpha = round(alpha + (255 - alpha) * s / 255).
// A mask of 255 leaves the pixel as it is.
void small_model_helper(const DabBlock& block);

// The same with a paper texture: each channel of P becomes the dab colour +
// paper - 128, clamped to 0..255. `paper` may be null for no texture.
void medium_model_helper(const DabBlock& block, const PaperBlock* paper);

}  // namespace wib
