// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/blit.h"

#include <cstring>

namespace wib {

// The C library's copy already picks the widest vector moves of the running
// processor and switches to streaming stores for blocks larger than the cache,
// which is exactly what whole-plane copies want.
void BlockCopy(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
    if (count != 0) {
        std::memcpy(destination, source, count);
    }
}

void BlockFill(std::uint8_t* destination, std::size_t count, std::uint8_t value) {
    if (count != 0) {
        std::memset(destination, value, count);
    }
}

void RectCopy(const std::uint8_t* source, std::size_t sourceStride, std::uint8_t* destination,
              std::size_t destinationStride, std::size_t columns, std::size_t rows) {
    for (std::size_t y = 0; y < rows; ++y) {
        BlockCopy(source + y * sourceStride, destination + y * destinationStride, columns);
    }
}

}  // namespace wib
