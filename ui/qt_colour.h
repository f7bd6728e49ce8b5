// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>

#include "core/packed_colour.h"

namespace wib {

// The program's colours as Qt's and back.
inline QColor ToQColor(PackedColour colour) {
    return QColor(colour.r, colour.g, colour.b);
}

inline PackedColour FromQColor(const QColor& colour) {
    return {static_cast<std::uint8_t>(colour.red()), static_cast<std::uint8_t>(colour.green()),
            static_cast<std::uint8_t>(colour.blue())};
}

// A colour as commands and controls pass it, packed into one integer; a
// value outside 0 .. 0xFFFFFF shows as black.
inline QColor PackedToQColor(long long packed) {
    return ToQColor(PackedColour::fromPacked(packed).value_or(PackedColour{}));
}

inline long long QColorToPacked(const QColor& colour) {
    return FromQColor(colour).packed();
}

}  // namespace wib
