#pragma once

#include <cstdint>

namespace wib {

// One row of one dab over the image: the image's colour and alpha rows and the
// brush mask row, all already advanced to the dab's first column in the image.
struct DabRow {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
    std::uint8_t* alpha;
    const std::uint8_t* mask;  // 0 = full strength, 255 = outside the brush
    int count;                 // pixels in the row
    int opacity;               // the stroke opacity for this row, 0..255
    std::uint8_t colour[3];    // the dab colour
    bool ignoreAlpha;          // paint regardless of the selection
    bool paintOnAlpha;         // raise the matte with the paint
};

// The paper texture under one dab row: a row of the paper plane, its width,
// and the paper column under the row's first pixel.
struct PaperRow {
    const std::uint8_t* row;
    int width;
    int firstColumn;
};

// Plain paint of one dab row. Per pixel, with integer division:
//   m = mask; w = 255 - m; s = w * opacity / 255;
//   unless ignoreAlpha: s = alpha * s / 255;
//   each channel: D = (s * P + (255 - s) * D) / 255;
//   with paintOnAlpha: alpha = round(alpha + (255 - alpha) * s / 255).
// A mask of 255 leaves the pixel as it is.
void small_model_helper(const DabRow& row);

// The same with a paper texture (each channel of P becomes the dab colour +
// paper - 128, clamped to 0..255); `paper` may be null for no texture.
void medium_model_helper(const DabRow& row, const PaperRow* paper);

}  // namespace wib
