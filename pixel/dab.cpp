#include "pixel/dab.h"

#include <algorithm>

// The row loops are written without branches so that the compiler vectorises
// them; each is built for AVX2 and for plain x86-64 and picked at run time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_ROW_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_ROW_KERNEL
#endif

namespace wib {

namespace {

// x / 255 truncated, exact for 0 <= x <= 65534.
inline unsigned Div255(unsigned x) { return (x + 1 + (x >> 8)) >> 8; }

inline std::uint8_t Blend(unsigned s, unsigned p, unsigned d) {
    return static_cast<std::uint8_t>(Div255(s * p + (255 - s) * d));
}

// round(a + (255 - a) * s / 255): the exact value never ends in one half,
// since 255 is odd, so adding 127 before the division rounds correctly.
inline std::uint8_t RaiseAlpha(unsigned a, unsigned s) {
    return static_cast<std::uint8_t>(Div255(a * 255 + (255 - a) * s + 127));
}

template <bool IgnoreAlpha, bool PaintOnAlpha>
void PlainRow(const DabRow& row) {
    const unsigned opacity = static_cast<unsigned>(std::clamp(row.opacity, 0, 255));
    const unsigned pr = row.colour[0], pg = row.colour[1], pb = row.colour[2];
    // The planes are separate blocks; saying so lets the loop be vectorised.
    std::uint8_t* __restrict r = row.r;
    std::uint8_t* __restrict g = row.g;
    std::uint8_t* __restrict b = row.b;
    std::uint8_t* __restrict alpha = row.alpha;
    const std::uint8_t* __restrict mask = row.mask;
    for (int i = 0; i < row.count; ++i) {
        unsigned s = Div255((255u - mask[i]) * opacity);
        if constexpr (!IgnoreAlpha) {
            s = Div255(alpha[i] * s);
        }
        r[i] = Blend(s, pr, r[i]);
        g[i] = Blend(s, pg, g[i]);
        b[i] = Blend(s, pb, b[i]);
        if constexpr (PaintOnAlpha) {
            alpha[i] = RaiseAlpha(alpha[i], s);
        }
    }
}

inline unsigned Textured(unsigned colour, unsigned paper) {
    return static_cast<unsigned>(std::clamp(static_cast<int>(colour + paper) - 128, 0, 255));
}

template <bool IgnoreAlpha, bool PaintOnAlpha>
void PaperRowKernel(const DabRow& row, const PaperRow& paper) {
    const unsigned opacity = static_cast<unsigned>(std::clamp(row.opacity, 0, 255));
    int column = paper.firstColumn;
    for (int i = 0; i < row.count; ++i) {
        const unsigned texture = paper.row[column];
        column = column + 1 == paper.width ? 0 : column + 1;
        unsigned s = Div255((255u - row.mask[i]) * opacity);
        if constexpr (!IgnoreAlpha) {
            s = Div255(row.alpha[i] * s);
        }
        row.r[i] = Blend(s, Textured(row.colour[0], texture), row.r[i]);
        row.g[i] = Blend(s, Textured(row.colour[1], texture), row.g[i]);
        row.b[i] = Blend(s, Textured(row.colour[2], texture), row.b[i]);
        if constexpr (PaintOnAlpha) {
            row.alpha[i] = RaiseAlpha(row.alpha[i], s);
        }
    }
}

WIB_ROW_KERNEL void PlainRowSelected(const DabRow& row) { PlainRow<false, false>(row); }
WIB_ROW_KERNEL void PlainRowEverywhere(const DabRow& row) { PlainRow<true, false>(row); }
WIB_ROW_KERNEL void PlainRowSelectedOnAlpha(const DabRow& row) { PlainRow<false, true>(row); }
WIB_ROW_KERNEL void PlainRowEverywhereOnAlpha(const DabRow& row) { PlainRow<true, true>(row); }

}  // namespace

void small_model_helper(const DabRow& row) {
    if (row.paintOnAlpha) {
        row.ignoreAlpha ? PlainRowEverywhereOnAlpha(row) : PlainRowSelectedOnAlpha(row);
    } else {
        row.ignoreAlpha ? PlainRowEverywhere(row) : PlainRowSelected(row);
    }
}

void medium_model_helper(const DabRow& row, const PaperRow* paper) {
    if (paper == nullptr || paper->width <= 0) {
        small_model_helper(row);
        return;
    }
    const int first = ((paper->firstColumn % paper->width) + paper->width) % paper->width;
    const PaperRow wrapped{paper->row, paper->width, first};
    if (row.paintOnAlpha) {
        row.ignoreAlpha ? PaperRowKernel<true, true>(row, wrapped)
                        : PaperRowKernel<false, true>(row, wrapped);
    } else {
        row.ignoreAlpha ? PaperRowKernel<true, false>(row, wrapped)
                        : PaperRowKernel<false, false>(row, wrapped);
    }
}

}  // namespace wib
