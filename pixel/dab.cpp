// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/dab.h"

#include <algorithm>
#include <cstring>

// The row loops are written without branches so that the compiler vectorises
// them; each kernel is built for AVX2 and for plain x86-64 and picked at run
// time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_DAB_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_DAB_KERNEL
#endif

// Inlined into each target clone, so that each is compiled for its own target.
#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {

namespace {

// x / 255 truncated, exact for 0 <= x <= 65534.
WIB_INLINE unsigned Div255(unsigned x) {
    return (x + 1 + (x >> 8)) >> 8;
}

WIB_INLINE std::uint8_t Blend(unsigned s, unsigned p, unsigned d) {
    return static_cast<std::uint8_t>(Div255(s * p + (255 - s) * d));
}

// round(a + (255 - a) * s / 255): the exact value never ends in one half,
// since 255 is odd, so adding 127 before the division rounds correctly.
WIB_INLINE std::uint8_t RaiseAlpha(unsigned a, unsigned s) {
    return static_cast<std::uint8_t>(Div255(a * 255 + (255 - a) * s + 127));
}

// Sixteen pixels at a time in 16-bit lanes: every intermediate value of the
// rules above stays below 65535, so 16 bits hold them exactly.
using U16x16 = std::uint16_t __attribute__((vector_size(32)));
using U8x16 = std::uint8_t __attribute__((vector_size(16)));

WIB_INLINE U16x16 Load16(const std::uint8_t* p) {
    U8x16 bytes;
    std::memcpy(&bytes, p, sizeof bytes);
    return __builtin_convertvector(bytes, U16x16);
}

WIB_INLINE void Store16(std::uint8_t* p, U16x16 v) {
    const U8x16 bytes = __builtin_convertvector(v, U8x16);
    std::memcpy(p, &bytes, sizeof bytes);
}

WIB_INLINE U16x16 Div255(U16x16 x) {
    return (x + 1 + (x >> 8)) >> 8;
}

WIB_INLINE U16x16 Blend(U16x16 s, U16x16 p, U16x16 d) {
    return Div255(s * p + (255 - s) * d);
}

template <bool IgnoreAlpha, bool PaintOnAlpha>
WIB_INLINE int Row16(std::uint8_t* r, std::uint8_t* g, std::uint8_t* b, std::uint8_t* alpha,
                     const std::uint8_t* mask, int count, unsigned opacity,
                     const std::uint8_t colour[3]) {
    const U16x16 zero{};
    const U16x16 pr = zero + colour[0];
    const U16x16 pg = zero + colour[1];
    const U16x16 pb = zero + colour[2];
    const U16x16 o = zero + static_cast<std::uint16_t>(opacity);
    int i = 0;
    for (; i + 16 <= count; i += 16) {
        U16x16 s = Div255((255 - Load16(mask + i)) * o);
        const U16x16 a = Load16(alpha + i);
        if constexpr (!IgnoreAlpha) {
            s = Div255(a * s);
        }
        Store16(r + i, Blend(s, pr, Load16(r + i)));
        Store16(g + i, Blend(s, pg, Load16(g + i)));
        Store16(b + i, Blend(s, pb, Load16(b + i)));
        if constexpr (PaintOnAlpha) {
            Store16(alpha + i, Div255(a * 255 + (255 - a) * s + 127));
        }
    }
    return i;
}

WIB_INLINE unsigned Textured(unsigned colour, unsigned paper) {
    return static_cast<unsigned>(std::clamp(static_cast<int>(colour + paper) - 128, 0, 255));
}

// One row; `paper` is null or the paper row with the column under pixel 0.
template <bool IgnoreAlpha, bool PaintOnAlpha, bool Paper>
WIB_INLINE void Row(std::uint8_t* __restrict r, std::uint8_t* __restrict g,
                    std::uint8_t* __restrict b, std::uint8_t* __restrict alpha,
                    const std::uint8_t* __restrict mask, int count, unsigned opacity,
                    const std::uint8_t colour[3], const std::uint8_t* __restrict paper,
                    int paperWidth, int paperColumn) {
    const unsigned pr = colour[0], pg = colour[1], pb = colour[2];
    int i = 0;
    if constexpr (!Paper) {
        i = Row16<IgnoreAlpha, PaintOnAlpha>(r, g, b, alpha, mask, count, opacity, colour);
    }
    for (; i < count; ++i) {
        unsigned s = Div255((255u - mask[i]) * opacity);
        if constexpr (!IgnoreAlpha) {
            s = Div255(alpha[i] * s);
        }
        if constexpr (Paper) {
            const unsigned texture = paper[paperColumn];
            paperColumn = paperColumn + 1 == paperWidth ? 0 : paperColumn + 1;
            r[i] = Blend(s, Textured(pr, texture), r[i]);
            g[i] = Blend(s, Textured(pg, texture), g[i]);
            b[i] = Blend(s, Textured(pb, texture), b[i]);
        } else {
            r[i] = Blend(s, pr, r[i]);
            g[i] = Blend(s, pg, g[i]);
            b[i] = Blend(s, pb, b[i]);
        }
        if constexpr (PaintOnAlpha) {
            alpha[i] = RaiseAlpha(alpha[i], s);
        }
    }
}

template <bool IgnoreAlpha, bool PaintOnAlpha, bool Paper>
WIB_INLINE void Block(const DabBlock& d, const PaperBlock* paper) {
    for (int j = 0; j < d.height; ++j) {
        const std::size_t at = static_cast<std::size_t>(j) * d.imageStride;
        const std::uint8_t* paperRow = nullptr;
        if constexpr (Paper) {
            paperRow =
                paper->data + static_cast<std::size_t>((paper->firstRow + j) % paper->height) *
                                  static_cast<std::size_t>(paper->width);
        }
        Row<IgnoreAlpha, PaintOnAlpha, Paper>(d.r + at, d.g + at, d.b + at, d.alpha + at,
                                              d.mask + static_cast<std::size_t>(j) * d.maskStride,
                                              d.width, static_cast<unsigned>(DabRowOpacity(d, j)),
                                              d.colour, paperRow, Paper ? paper->width : 0,
                                              Paper ? paper->firstColumn : 0);
    }
}

WIB_DAB_KERNEL void PlainSelected(const DabBlock& d) {
    Block<false, false, false>(d, nullptr);
}
WIB_DAB_KERNEL void PlainEverywhere(const DabBlock& d) {
    Block<true, false, false>(d, nullptr);
}
WIB_DAB_KERNEL void PlainSelectedOnAlpha(const DabBlock& d) {
    Block<false, true, false>(d, nullptr);
}
WIB_DAB_KERNEL void PlainEverywhereOnAlpha(const DabBlock& d) {
    Block<true, true, false>(d, nullptr);
}

}  // namespace

int DabRowOpacity(const DabBlock& block, int j) {
    const int opacity = std::clamp(block.opacity, 0, 255);
    if (block.fade <= 0) {
        return opacity;
    }
    return std::max(0,
                    opacity - block.fade * (block.fadeFirstRow + j) / std::max(1, block.fadeSpan));
}

void small_model_helper(const DabBlock& block) {
    if (block.paintOnAlpha) {
        block.ignoreAlpha ? PlainEverywhereOnAlpha(block) : PlainSelectedOnAlpha(block);
    } else {
        block.ignoreAlpha ? PlainEverywhere(block) : PlainSelected(block);
    }
}

void medium_model_helper(const DabBlock& block, const PaperBlock* paper) {
    if (paper == nullptr || paper->width <= 0 || paper->height <= 0) {
        small_model_helper(block);
        return;
    }
    const auto wrap = [](int v, int n) { return ((v % n) + n) % n; };
    const PaperBlock wrapped{paper->data, paper->width, paper->height,
                             wrap(paper->firstRow, paper->height),
                             wrap(paper->firstColumn, paper->width)};
    if (block.paintOnAlpha) {
        block.ignoreAlpha ? Block<true, true, true>(block, &wrapped)
                          : Block<false, true, true>(block, &wrapped);
    } else {
        block.ignoreAlpha ? Block<true, false, true>(block, &wrapped)
                          : Block<false, false, true>(block, &wrapped);
    }
}

}  // namespace wib
