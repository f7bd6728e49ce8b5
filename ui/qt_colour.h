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

}  // namespace wib
