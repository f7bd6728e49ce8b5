#include "paint/paint_modes.h"

#include <algorithm>
#include <cstdlib>

namespace wib {

const char* PaintModeName(int mode) {
    static constexpr const char* kNames[kPaintModeCount] = {
        "Paint",   "Add",           "Screen",     "Multiply", "From swap", "Clone",
        "Smear",   "Pattern",       "Pattern offset", "Lighten", "Subtract", "Difference"};
    return mode >= 0 && mode < kPaintModeCount ? kNames[mode] : "Add";
}

PaintModeTables::PaintModeTables() {
    for (int p = 0; p < 256; ++p) {
        for (int d = 0; d < 256; ++d) {
            a[p][d] = static_cast<std::uint8_t>(std::min(255, p + d));
            b[p][d] = static_cast<std::uint8_t>(255 - (255 - p) * (255 - d) / 255);
            c[p][d] = static_cast<std::uint8_t>(std::max(p, d));
            this->d[p][d] = static_cast<std::uint8_t>(std::max(0, d - p));
            e[p][d] = static_cast<std::uint8_t>(std::abs(d - p));
        }
    }
}

const PaintModeTables::Table& PaintModeTables::forMode(int mode) const {
    switch (static_cast<PaintMode>(mode)) {
        case PaintMode::Screen:
            return b;
        case PaintMode::Lighten:
            return c;
        case PaintMode::Subtract:
            return d;
        case PaintMode::Difference:
            return e;
        default:
            return a;
    }
}

}  // namespace wib
