// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/document.h"
#include "tests/support/pixels.h"

namespace wib {

// One pixel of the main buffer packed R + 256 G + 65536 B, for tests that
// compare whole pixels.
inline std::int32_t PackedPixel(const Document& doc, int x, int y) {
    return PackedColour{doc.RBuffer.at(x, y), doc.GBuffer.at(x, y), doc.BBuffer.at(x, y)}.packed();
}

inline void SetPixel(Document& doc, int x, int y, PackedColour colour) {
    doc.RBuffer.at(x, y) = colour.r;
    doc.GBuffer.at(x, y) = colour.g;
    doc.BBuffer.at(x, y) = colour.b;
}

}  // namespace wib
