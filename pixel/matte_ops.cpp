// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_ops.h"

#include <algorithm>
#include <cstring>

#include "pixel/plane_band.h"

namespace wib {

namespace {

WIB_WINDOW_KERNEL void AddRow(std::uint8_t* old, const std::uint8_t* incoming, int count) {
    for (int x = 0; x < count; ++x) {
        old[x] = std::max(old[x], incoming[x]);
    }
}

WIB_WINDOW_KERNEL void SubtractRow(std::uint8_t* old, const std::uint8_t* incoming, int count) {
    for (int x = 0; x < count; ++x) {
        old[x] = std::min(old[x], static_cast<std::uint8_t>(255 - incoming[x]));
    }
}

WIB_WINDOW_KERNEL void IntersectRow(std::uint8_t* old, const std::uint8_t* incoming, int count) {
    for (int x = 0; x < count; ++x) {
        old[x] = std::min(old[x], incoming[x]);
    }
}

}  // namespace

void CombineMatteRow(std::uint8_t* old, const std::uint8_t* incoming, MatteMode mode, int count) {
    switch (mode) {
        case MatteMode::Replace:
            std::memcpy(old, incoming, static_cast<std::size_t>(count));
            return;
        case MatteMode::Add:
            AddRow(old, incoming, count);
            return;
        case MatteMode::Subtract:
            SubtractRow(old, incoming, count);
            return;
        case MatteMode::Intersect:
            IntersectRow(old, incoming, count);
            return;
    }
}

WIB_WINDOW_KERNEL void InvertMatteRow(std::uint8_t* row, int count) {
    for (int x = 0; x < count; ++x) {
        row[x] = static_cast<std::uint8_t>(255 - row[x]);
    }
}

WIB_WINDOW_KERNEL void ThresholdMatteRow(std::uint8_t* row, int count) {
    for (int x = 0; x < count; ++x) {
        row[x] = row[x] >= 128 ? 255 : 0;
    }
}

WIB_WINDOW_KERNEL void FillThroughMatteRow(std::uint8_t* target, const std::uint8_t* weight,
                                           std::uint8_t colour, int count) {
    for (int x = 0; x < count; ++x) {
        const int w = weight[x];
        target[x] = static_cast<std::uint8_t>((colour * w + target[x] * (255 - w) + 127) / 255);
    }
}

}  // namespace wib
