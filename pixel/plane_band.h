// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

// The window kernels are written without branches in their inner loops so that
// the compiler vectorises them; each is built for AVX2 and for plain x86-64
// and picked at run time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_WINDOW_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_WINDOW_KERNEL
#endif

namespace wib {

// One plane of a window filter: `source` and `target` are separate planes of
// one shape, `stride` bytes a row, the image `width` x `height`; the kernel
// writes target rows first..end-1 (columns 0..width-1) and may read any source
// row. Outside the image the border pixels repeat.
struct PlaneBand {
    const std::uint8_t* source = nullptr;
    std::uint8_t* target = nullptr;
    std::size_t stride = 0;
    int width = 0;
    int height = 0;
    int first = 0;
    int end = 0;

    const std::uint8_t* sourceRow(int y) const {
        return source + static_cast<std::size_t>(ClampIndex(y, height)) * stride;
    }
    std::uint8_t* targetRow(int y) const { return target + static_cast<std::size_t>(y) * stride; }

    // The nearest index in 0..count-1: the replicated border.
    static int ClampIndex(int i, int count) { return std::clamp(i, 0, count - 1); }
};

// Copies `row` (width values) into `out` with `pad` replicated border values
// on each side: out[pad + x] = row[x].
template <typename T, typename S>
void ExtendRow(const S* row, int width, int pad, T* out) {
    for (int i = 0; i < pad; ++i) {
        out[i] = static_cast<T>(row[0]);
        out[pad + width + i] = static_cast<T>(row[width - 1]);
    }
    for (int x = 0; x < width; ++x) {
        out[pad + x] = static_cast<T>(row[x]);
    }
}

}  // namespace wib
