// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// What the routines that move frame blocks work from, refreshed at every load
// of a frame: the frame shown, the document size and the bytes of one plane,
// (width + 1) * (height + 1).
struct FrameTransferRecord {
    std::int32_t frame = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t planeBytes = 0;
};

// The red, green and blue planes of one frame, or of the main buffer.
struct FramePlanes {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
};

// Three block copies, one per colour.
void CopyFramePlanes(const FramePlanes& from, const FramePlanes& to, std::size_t planeBytes);

// Stores `image` into `stored`, then loads `loaded` into `image` (both may be
// the same frame), on two workers, each byte's load after its own store.
void SwitchFramePlanes(const FramePlanes& image, const FramePlanes& stored,
                       const FramePlanes& loaded, std::size_t planeBytes);

}  // namespace wib
