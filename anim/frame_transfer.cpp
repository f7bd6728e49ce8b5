// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_transfer.h"

#include <algorithm>
#include <functional>
#include <thread>

#include "pixel/blit.h"

namespace wib {

void CopyFramePlanes(const FramePlanes& from, const FramePlanes& to, std::size_t planeBytes) {
    BlockCopy(from.r, to.r, planeBytes);
    BlockCopy(from.g, to.g, planeBytes);
    BlockCopy(from.b, to.b, planeBytes);
}

namespace {

// Small enough that a block stored from the image is still cached when the
// same bytes are loaded over.
constexpr std::size_t kBlockBytes = 64 * 1024;

void SwitchRange(const FramePlanes& image, const FramePlanes& stored, const FramePlanes& loaded,
                 std::size_t begin, std::size_t end) {
    const std::uint8_t* const from[3] = {loaded.r, loaded.g, loaded.b};
    std::uint8_t* const into[3] = {stored.r, stored.g, stored.b};
    std::uint8_t* const shown[3] = {image.r, image.g, image.b};
    for (int plane = 0; plane < 3; ++plane) {
        for (std::size_t at = begin; at < end; at += kBlockBytes) {
            const std::size_t bytes = std::min(kBlockBytes, end - at);
            BlockCopy(shown[plane] + at, into[plane] + at, bytes);
            BlockCopy(from[plane] + at, shown[plane] + at, bytes);
        }
    }
}

}  // namespace

// Each worker takes half of every plane, block by block: a block is stored and
// at once loaded over, so each byte's load follows its own store.
void SwitchFramePlanes(const FramePlanes& image, const FramePlanes& stored,
                       const FramePlanes& loaded, std::size_t planeBytes) {
    const std::size_t half = planeBytes / 2;
    std::jthread other(SwitchRange, std::cref(image), std::cref(stored), std::cref(loaded), half,
                       planeBytes);
    SwitchRange(image, stored, loaded, 0, half);
}

}  // namespace wib
