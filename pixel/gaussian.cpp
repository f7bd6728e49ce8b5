// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/gaussian.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace wib {

namespace {

// From this sigma on the box passes are both faster and accurate enough.
constexpr double kBoxPassesFrom = 3.0;
constexpr int kBoxPasses = 4;
// Rows filtered together along their length.
constexpr int kGroup = 32;
// Columns filtered together down their length.
constexpr int kStrip = 64;

// The direct kernel works in 16-bit fixed point: pixels scaled by 2^7, so
// that the pair at -k and +k still fits 16 bits, and weights in units of
// 2^-16 applied as the high half of the product. The pass along the rows
// keeps that scale, the pass down the columns drops it with rounding.
constexpr int kPixelShift = 7;
// The direct kernel reaches 3 sigma, so its radius is at most this.
constexpr int kDirectRadius = 9;
static_assert(kDirectRadius >= 3 * kBoxPassesFrom);

// acc = w[0] * centre + sum over k of w[k] * (centre[-k] + centre[+k]), all
// taps of a pixel in one loop along the row so that its sum stays in a
// register; compiled for each radius the direct kernel uses.
template <int Radius>
inline __attribute__((always_inline)) void FixedTapsOf(const std::uint16_t* const* rows,
                                                       const std::uint16_t* weights, int width,
                                                       std::uint16_t* __restrict acc) {
    for (int x = 0; x < width; ++x) {
        std::uint16_t sum =
            static_cast<std::uint16_t>((rows[0][x] * std::uint32_t{weights[0]}) >> 16);
        for (int k = 1; k <= Radius; ++k) {
            const std::uint32_t pair =
                static_cast<std::uint16_t>(rows[2 * k - 1][x] + rows[2 * k][x]);
            sum = static_cast<std::uint16_t>(sum + ((pair * weights[k]) >> 16));
        }
        acc[x] = sum;
    }
}

template <int... Radius>
inline __attribute__((always_inline)) void FixedTapsUpTo(const std::uint16_t* const* rows,
                                                         const std::uint16_t* weights, int radius,
                                                         int width, std::uint16_t* acc,
                                                         std::integer_sequence<int, Radius...>) {
    ((radius == Radius + 1 ? FixedTapsOf<Radius + 1>(rows, weights, width, acc) : void()), ...);
}

WIB_WINDOW_KERNEL void FixedTaps(const std::uint16_t* const* rows, const std::uint16_t* weights,
                                 int radius, int width, std::uint16_t* acc) {
    FixedTapsUpTo(rows, weights, radius, width, acc,
                  std::make_integer_sequence<int, kDirectRadius>{});
}

WIB_WINDOW_KERNEL void ScaleRow(const std::uint8_t* row, int width, int pad,
                                std::uint16_t* extended) {
    const auto scaled = [](std::uint8_t v) { return static_cast<std::uint16_t>(v << kPixelShift); };
    std::fill(extended, extended + pad, scaled(row[0]));
    std::fill(extended + pad + width, extended + 2 * pad + width, scaled(row[width - 1]));
    for (int x = 0; x < width; ++x) {
        extended[pad + x] = scaled(row[x]);
    }
}

WIB_WINDOW_KERNEL void RoundRow(const std::uint16_t* acc, int width, int bias, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<std::uint8_t>((acc[x] + bias) >> kPixelShift);
    }
}

// Weights of the centre and of each pair at +-k, in units of 2^-16 summing to
// 2^16. Each tail of the kernel is rounded as a whole and the weights are the
// differences, so any run of taps from the end is within half a unit of its
// exact weight: a step edge meets no more error than that.
std::vector<std::uint16_t> FixedWeights(double sigma, int radius) {
    std::vector<double> tail(static_cast<std::size_t>(radius + 2));
    double total = 1;
    for (int k = radius; k >= 1; --k) {
        const double g = std::exp(-k * k / (2 * sigma * sigma));
        tail[static_cast<std::size_t>(k)] = tail[static_cast<std::size_t>(k) + 1] + g;
        total += 2 * g;
    }
    const auto rounded = [&](int k) {
        return std::lround(65536 * tail[static_cast<std::size_t>(k)] / total);
    };
    std::vector<std::uint16_t> weights(static_cast<std::size_t>(radius + 1));
    weights[0] = static_cast<std::uint16_t>(std::min(65536 - 2 * rounded(1), 65535L));
    for (int k = 1; k <= radius; ++k) {
        weights[static_cast<std::size_t>(k)] =
            static_cast<std::uint16_t>(rounded(k) - rounded(k + 1));
    }
    return weights;
}

// The kernel to 3 sigma: what it leaves out beyond is 0.3 % of the weight,
// far below a level after rounding. Rows are filtered along their length
// once each into a ring, which the pass down the columns reads.
void DirectGaussian(const PlaneBand& band, double sigma) {
    const int radius = std::max(1, static_cast<int>(std::ceil(3 * sigma)));
    const int size = 2 * radius + 1;
    const auto width = static_cast<std::size_t>(band.width);
    const std::vector<std::uint16_t> weights = FixedWeights(sigma, radius);
    std::vector<std::uint16_t> extended(width + 2 * static_cast<std::size_t>(radius));
    std::vector<std::uint16_t> ring(width * static_cast<std::size_t>(size));
    std::vector<std::uint16_t> acc(width);
    std::vector<const std::uint16_t*> taps(static_cast<std::size_t>(size));
    const auto ringRow = [&](int y) {
        return ring.data() + static_cast<std::size_t>((y + size) % size) * width;
    };
    const auto filterRow = [&](int y) {
        ScaleRow(band.sourceRow(y), band.width, radius, extended.data());
        const std::uint16_t* centre = extended.data() + radius;
        taps[0] = centre;
        for (int k = 1; k <= radius; ++k) {
            taps[static_cast<std::size_t>(2 * k - 1)] = centre - k;
            taps[static_cast<std::size_t>(2 * k)] = centre + k;
        }
        FixedTaps(taps.data(), weights.data(), radius, band.width, ringRow(y));
    };
    // Each product is truncated: on average half a unit low per weight in
    // each pass, which the rounding gives back.
    const int bias = (1 << (kPixelShift - 1)) + radius + 1;
    for (int y = band.first - radius; y < band.first + radius; ++y) {
        filterRow(y);
    }
    for (int y = band.first; y < band.end; ++y) {
        filterRow(y + radius);
        taps[0] = ringRow(y);
        for (int k = 1; k <= radius; ++k) {
            taps[static_cast<std::size_t>(2 * k - 1)] = ringRow(y - k);
            taps[static_cast<std::size_t>(2 * k)] = ringRow(y + k);
        }
        FixedTaps(taps.data(), weights.data(), radius, band.width, acc.data());
        RoundRow(acc.data(), band.width, bias, band.targetRow(y));
    }
}

// A box of radius r with extra taps of weight `alpha` at +-(r + 1), all
// scaled by `scale`: its variance can be any value, not only r (r + 1) / 3.
struct ExtendedBox {
    int radius = 0;
    float alpha = 0;
    float scale = 1;

    int reach() const { return radius + 1; }
};

ExtendedBox MatchVariance(double variance) {
    ExtendedBox box;
    while ((box.radius + 1) * (box.radius + 2) / 3.0 <= variance) {
        ++box.radius;
    }
    const double r = box.radius;
    const double alpha =
        (2 * r + 1) * (r * (r + 1) / 3 - variance) / (2 * (variance - (r + 1) * (r + 1)));
    box.alpha = static_cast<float>(alpha);
    box.scale = static_cast<float>(1 / (2 * r + 1 + 2 * alpha));
    return box;
}

// Floats `stride` apart from row to row.
struct Rows {
    float* data;
    std::size_t stride;

    float* row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

// One pass down the columns of `rows` rows of `width` floats: out row i is the
// box centred on in row i + reach, for every i with the whole box inside.
WIB_WINDOW_KERNEL void BoxPassDown(Rows in, int rows, int width, const ExtendedBox& box,
                                   float* __restrict inner, Rows out) {
    const int span = 2 * box.reach();
    const float scale = box.scale;
    const float alpha = box.alpha;
    std::fill(inner, inner + width, 0.0f);
    for (int j = 1; j < span; ++j) {
        const float* __restrict r = in.row(j);
        for (int x = 0; x < width; ++x) {
            inner[x] += r[x];
        }
    }
    // Input and output are separate buffers, which the compiler would
    // otherwise check for every row.
    for (int i = 0; i + span < rows; ++i) {
        const float* __restrict top = in.row(i);
        const float* __restrict next = in.row(i + 1);
        const float* __restrict bottom = in.row(i + span);
        float* __restrict o = out.row(i);
        for (int x = 0; x < width; ++x) {
            o[x] = scale * (inner[x] + alpha * (top[x] + bottom[x]));
            inner[x] += bottom[x] - next[x];
        }
    }
}

// Rounded, then clamped as integers: a clamp of floats does not vectorise,
// since it must keep the order of comparisons for NaN.
WIB_WINDOW_KERNEL void StoreRow(const float* in, int width, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(in[x] + 0.5f), 0, 255));
    }
}

using Floats8 = float __attribute__((vector_size(32)));
using Bytes8 = std::uint8_t __attribute__((vector_size(8)));

inline __attribute__((always_inline)) Floats8 LoadFloats(const float* p) {
    Floats8 v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

inline __attribute__((always_inline)) Floats8 LoadFloats(const std::uint8_t* p) {
    Bytes8 v;
    std::memcpy(&v, p, sizeof v);
    return __builtin_convertvector(v, Floats8);
}

// Row i of an 8 x 8 block of `from` becomes column i of `to`: interleaved
// pairs, then pairs of pairs, then halves.
template <typename T>
inline __attribute__((always_inline)) void Transpose8(const T* from, std::size_t fromStride,
                                                      float* to, std::size_t toStride) {
    Floats8 r[8];
    for (std::size_t i = 0; i < 8; ++i) {
        r[i] = LoadFloats(from + i * fromStride);
    }
    Floats8 t[8];
    for (int i = 0; i < 8; i += 2) {
        t[i] = __builtin_shufflevector(r[i], r[i + 1], 0, 8, 1, 9, 4, 12, 5, 13);
        t[i + 1] = __builtin_shufflevector(r[i], r[i + 1], 2, 10, 3, 11, 6, 14, 7, 15);
    }
    // s[j] and s[j + 4] hold columns j and j + 4 of rows 0-3 and 4-7.
    Floats8 s[8];
    for (int i = 0; i < 8; i += 4) {
        s[i] = __builtin_shufflevector(t[i], t[i + 2], 0, 1, 8, 9, 4, 5, 12, 13);
        s[i + 1] = __builtin_shufflevector(t[i], t[i + 2], 2, 3, 10, 11, 6, 7, 14, 15);
        s[i + 2] = __builtin_shufflevector(t[i + 1], t[i + 3], 0, 1, 8, 9, 4, 5, 12, 13);
        s[i + 3] = __builtin_shufflevector(t[i + 1], t[i + 3], 2, 3, 10, 11, 6, 7, 14, 15);
    }
    for (std::size_t j = 0; j < 4; ++j) {
        const Floats8 low = __builtin_shufflevector(s[j], s[j + 4], 0, 1, 2, 3, 8, 9, 10, 11);
        const Floats8 high = __builtin_shufflevector(s[j], s[j + 4], 4, 5, 6, 7, 12, 13, 14, 15);
        std::memcpy(to + j * toStride, &low, sizeof low);
        std::memcpy(to + (j + 4) * toStride, &high, sizeof high);
    }
}

// kGroup rows of bytes, `stride` apart, into a group of floats with the
// rows side by side: group[x * kGroup + r] = rows[r * stride + x], for x up
// to `count` rounded up to 8.
WIB_WINDOW_KERNEL void TransposeIn(const std::uint8_t* rows, std::size_t stride, int count,
                                   float* group) {
    for (int x = 0; x < count; x += 8) {
        for (int r = 0; r < kGroup; r += 8) {
            Transpose8(rows + static_cast<std::size_t>(r) * stride + x, stride,
                       group + static_cast<std::size_t>(x) * kGroup + r, kGroup);
        }
    }
}

// The way back: plane[r * stride + x] = group[x * kGroup + r].
WIB_WINDOW_KERNEL void TransposeOut(const float* group, int count, float* plane,
                                    std::size_t stride) {
    for (int x = 0; x < count; x += 8) {
        for (int r = 0; r < kGroup; r += 8) {
            Transpose8(group + static_cast<std::size_t>(x) * kGroup + r, kGroup,
                       plane + static_cast<std::size_t>(r) * stride + x, stride);
        }
    }
}

// Passes over the image extended by the passes' whole reach, so each pass
// sees the replicated border exactly as one kernel over the image would.
void BoxPassGaussian(const PlaneBand& band, double sigma) {
    const ExtendedBox box = MatchVariance(sigma * sigma / kBoxPasses);
    const int reach = kBoxPasses * box.reach();
    const int width = band.width;
    const int rows = band.end - band.first + 2 * reach;
    // The passes along the rows run down the columns of a transposed group of
    // rows, so that they too are vector loops across independent sums.
    // Whole groups of rows and whole 8 x 8 blocks: the rows past the last
    // are border rows, filtered and never read.
    const int length = width + 2 * reach;
    const auto eights = [](int n) { return static_cast<std::size_t>((n + 7) / 8 * 8); };
    const std::size_t padded = eights(length);
    const std::size_t planeStride = eights(width);
    std::vector<std::uint8_t> extended(padded * kGroup);
    std::vector<float> groupA(padded * kGroup);
    std::vector<float> groupB(groupA.size());
    std::vector<float> planeA(static_cast<std::size_t>(rows + kGroup) * planeStride);
    std::vector<float> stripA(static_cast<std::size_t>(rows) * kStrip);
    std::vector<float> stripB(stripA.size());
    std::vector<float> inner(static_cast<std::size_t>(std::max(width, kGroup)));
    for (int i0 = 0; i0 < rows; i0 += kGroup) {
        for (int r = 0; r < kGroup; ++r) {
            ExtendRow(band.sourceRow(band.first - reach + i0 + r), width, reach,
                      extended.data() + static_cast<std::size_t>(r) * padded);
        }
        TransposeIn(extended.data(), padded, length, groupA.data());
        float* in = groupA.data();
        float* out = groupB.data();
        int count = length;
        for (int pass = 0; pass < kBoxPasses; ++pass) {
            BoxPassDown({in, kGroup}, count, kGroup, box, inner.data(), {out, kGroup});
            count -= 2 * box.reach();
            std::swap(in, out);
        }
        TransposeOut(in, width, planeA.data() + static_cast<std::size_t>(i0) * planeStride,
                     planeStride);
    }
    // The passes down the columns go strip by strip, each strip's rows
    // staying in cache from one pass to the next.
    for (int x0 = 0; x0 < width; x0 += kStrip) {
        const int strip = std::min(kStrip, width - x0);
        Rows in{planeA.data() + x0, planeStride};
        Rows out{stripA.data(), static_cast<std::size_t>(strip)};
        int count = rows;
        for (int pass = 0; pass < kBoxPasses; ++pass) {
            BoxPassDown(in, count, strip, box, inner.data(), out);
            count -= 2 * box.reach();
            in = out;
            out.data = out.data == stripA.data() ? stripB.data() : stripA.data();
        }
        for (int y = band.first; y < band.end; ++y) {
            StoreRow(in.row(y - band.first), strip, band.targetRow(y) + x0);
        }
    }
}

}  // namespace

void GaussianBlur(const PlaneBand& band, double sigma) {
    if (band.first >= band.end) {
        return;
    }
    if (sigma < kBoxPassesFrom) {
        DirectGaussian(band, sigma);
    } else {
        BoxPassGaussian(band, sigma);
    }
}

}  // namespace wib
