// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paint_modes.h"

namespace wib {

const char* PaintModeName(int mode) {
    static constexpr const char* kNames[kPaintModeCount] = {
        "Paint", "Add",     "Screen",         "Multiply", "From swap", "Clone",
        "Smear", "Pattern", "Pattern offset", "Lighten",  "Subtract",  "Difference"};
    return mode >= 0 && mode < kPaintModeCount ? kNames[mode] : "Add";
}

BlendOp PaintModeBlend(int mode) {
    switch (static_cast<PaintMode>(mode)) {
        case PaintMode::Screen:
            return BlendOp::Screen;
        case PaintMode::Lighten:
            return BlendOp::Lighten;
        case PaintMode::Subtract:
            return BlendOp::Subtract;
        case PaintMode::Difference:
            return BlendOp::Difference;
        default:
            return BlendOp::Add;
    }
}

}  // namespace wib
