#pragma once

#include <array>
#include <cstdint>

namespace wib {

// The paint modes: where the colour mixed into the image comes from.
enum class PaintMode : int {
    Plain = 0,
    Add = 1,          // lookup table A
    Screen = 2,       // lookup table B
    Multiply = 3,
    FromSwap = 4,     // restores from the swap buffer
    Clone = 5,
    Smear = 6,
    Pattern = 7,
    PatternOffset = 8,
    Lighten = 9,      // lookup table C
    Subtract = 10,    // lookup table D
    Difference = 11,  // lookup table E
};
inline constexpr int kPaintModeCount = 12;
const char* PaintModeName(int mode);

// The lookup tables of the blending modes, indexed [paint][image]: the paint
// value is already weighted by the brush mask (w * P / 255), so a paint value
// of 0 (outside the brush) leaves every image value as it is.
struct PaintModeTables {
    using Table = std::array<std::array<std::uint8_t, 256>, 256>;
    Table a, b, c, d, e;
    PaintModeTables();
    // The table of a lookup mode; Add's for any mode without one of its own.
    const Table& forMode(int mode) const;
};

}  // namespace wib
