// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

namespace wib {

// A colour of three 8-bit channels, as the program passes colours around:
// packed into one integer it is R + 256 G + 65536 B.
struct PackedColour {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;

    std::int32_t packed() const { return r + 256 * g + 65536 * b; }

    // Nothing for a value outside 0 .. 0xFFFFFF.
    static std::optional<PackedColour> fromPacked(std::int64_t value) {
        if (value < 0 || value > 0xFFFFFF) {
            return std::nullopt;
        }
        return PackedColour{static_cast<std::uint8_t>(value & 0xFF),
                            static_cast<std::uint8_t>((value >> 8) & 0xFF),
                            static_cast<std::uint8_t>((value >> 16) & 0xFF)};
    }

    friend bool operator==(const PackedColour&, const PackedColour&) = default;
};

// The two colours a painting tool uses: the primary for the main button,
// the secondary for the other button, clearing and erasing.
struct ColourState {
    PackedColour primary{0, 0, 0};
    PackedColour secondary{255, 255, 255};
};

}  // namespace wib
