// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/affine.h"

#include <algorithm>
#include <cmath>

// Each row kernel is built for AVX2 and for plain x86-64 and picked at run time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define WIB_AFFINE_KERNEL __attribute__((target_clones("avx2", "default")))
#else
#define WIB_AFFINE_KERNEL
#endif

#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {

namespace {

// Source positions step along a row in fixed point with 32 fraction bits, so
// that rounding the step adds less than a thousandth of a pixel over any row.
constexpr int kFractionBits = 32;
constexpr double kFixedOne = 4294967296.0;
// Bilinear weights keep 8 bits of the fraction: 256 steps per pixel.
constexpr int kWeightBits = 8;
constexpr unsigned kWeightOne = 1u << kWeightBits;

struct FixedStep {
    std::int64_t u, v, du, dv;
};

FixedStep RowStart(const AffineMatrix& m, int y) {
    return {std::llround((m.xy * y + m.x0) * kFixedOne),
            std::llround((m.yy * y + m.y0) * kFixedOne), std::llround(m.xx * kFixedOne),
            std::llround(m.yx * kFixedOne)};
}

// Nothing of the block lands on this target pixel.
WIB_INLINE void ClearPixel(std::uint8_t* const rows[4], int x) {
    rows[0][x] = 0;
    rows[1][x] = 0;
    rows[2][x] = 0;
    rows[3][x] = 0;
}

// Taps weighted by their coverage: the colour is the coverage-weighted mean of
// the covered taps and the coverage the weighted sum, so edges of the block
// come out anti-aliased and never darkened by what lies outside it.
struct Accumulator {
    double colour[3] = {0, 0, 0};
    double cover = 0;

    void add(const AffineSource& s, int ix, int iy, double weight) {
        if (ix < 0 || iy < 0 || ix >= s.width || iy >= s.height || weight == 0) {
            return;
        }
        const std::size_t at =
            static_cast<std::size_t>(iy) * s.stride + static_cast<std::size_t>(ix);
        const double covered = weight * (s.coverage != nullptr ? s.coverage[at] : 255);
        cover += covered;
        for (int c = 0; c < 3; ++c) {
            colour[c] += covered * s.planes[c][at];
        }
    }

    void store(std::uint8_t* const rows[4], int x) const {
        if (cover <= 0) {
            ClearPixel(rows, x);
            return;
        }
        for (int c = 0; c < 3; ++c) {
            rows[c][x] = static_cast<std::uint8_t>(std::clamp(colour[c] / cover + 0.5, 0.0, 255.0));
        }
        rows[3][x] = static_cast<std::uint8_t>(std::clamp(cover + 0.5, 0.0, 255.0));
    }
};

// One bilinear sample near the block's edge or from a block with coverage.
void BilinearCovered(const AffineSource& s, int ix, int iy, unsigned fx, unsigned fy,
                     std::uint8_t* const rows[4], int x) {
    constexpr double kScale = 1.0 / (kWeightOne * kWeightOne);
    Accumulator sum;
    sum.add(s, ix, iy, (kWeightOne - fx) * (kWeightOne - fy) * kScale);
    sum.add(s, ix + 1, iy, fx * (kWeightOne - fy) * kScale);
    sum.add(s, ix, iy + 1, (kWeightOne - fx) * fy * kScale);
    sum.add(s, ix + 1, iy + 1, fx * fy * kScale);
    sum.store(rows, x);
}

WIB_AFFINE_KERNEL void BilinearRow(const AffineSource& s, std::uint8_t* const rows[4], int width,
                                   FixedStep step) {
    const bool opaque = s.coverage == nullptr;
    const std::size_t stride = s.stride;
    for (int x = 0; x < width; ++x, step.u += step.du, step.v += step.dv) {
        // Rounded to the weights' precision first, so a fraction never rounds up to a whole pixel.
        constexpr int kDrop = kFractionBits - kWeightBits;
        const std::int64_t u = (step.u + (std::int64_t{1} << (kDrop - 1))) >> kDrop;
        const std::int64_t v = (step.v + (std::int64_t{1} << (kDrop - 1))) >> kDrop;
        const std::int64_t ix = u >> kWeightBits;
        const std::int64_t iy = v >> kWeightBits;
        const unsigned fx = static_cast<unsigned>(u) & (kWeightOne - 1);
        const unsigned fy = static_cast<unsigned>(v) & (kWeightOne - 1);
        if (ix < -1 || iy < -1 || ix >= s.width || iy >= s.height) {
            ClearPixel(rows, x);
            continue;
        }
        if (!opaque || ix < 0 || iy < 0 || ix >= s.width - 1 || iy >= s.height - 1) {
            BilinearCovered(s, static_cast<int>(ix), static_cast<int>(iy), fx, fy, rows, x);
            continue;
        }
        const unsigned w00 = (kWeightOne - fx) * (kWeightOne - fy);
        const unsigned w01 = fx * (kWeightOne - fy);
        const unsigned w10 = (kWeightOne - fx) * fy;
        const unsigned w11 = fx * fy;
        const std::size_t at = static_cast<std::size_t>(iy) * stride + static_cast<std::size_t>(ix);
        for (int c = 0; c < 3; ++c) {
            const std::uint8_t* p = s.planes[c] + at;
            const unsigned sum = p[0] * w00 + p[1] * w01 + p[stride] * w10 + p[stride + 1] * w11;
            rows[c][x] = static_cast<std::uint8_t>((sum + (1u << 15)) >> 16);
        }
        rows[3][x] = 255;
    }
}

// Catmull-Rom weights for a fraction t of a pixel, taps at -1, 0, 1 and 2.
void CubicWeights(double t, double w[4]) {
    const double t2 = t * t;
    const double t3 = t2 * t;
    w[0] = 0.5 * (-t3 + 2 * t2 - t);
    w[1] = 0.5 * (3 * t3 - 5 * t2 + 2);
    w[2] = 0.5 * (-3 * t3 + 4 * t2 + t);
    w[3] = 0.5 * (t3 - t2);
}

WIB_AFFINE_KERNEL void BicubicRow(const AffineSource& s, std::uint8_t* const rows[4], int width,
                                  const AffineMatrix& m, int y) {
    for (int x = 0; x < width; ++x) {
        const double sx = m.xx * x + m.xy * y + m.x0;
        const double sy = m.yx * x + m.yy * y + m.y0;
        const double fx = std::floor(sx);
        const double fy = std::floor(sy);
        if (fx < -2 || fy < -2 || fx > s.width || fy > s.height) {
            ClearPixel(rows, x);
            continue;
        }
        double wx[4];
        double wy[4];
        CubicWeights(sx - fx, wx);
        CubicWeights(sy - fy, wy);
        const int ix = static_cast<int>(fx);
        const int iy = static_cast<int>(fy);
        Accumulator sum;
        for (int j = 0; j < 4; ++j) {
            for (int i = 0; i < 4; ++i) {
                sum.add(s, ix - 1 + i, iy - 1 + j, wx[i] * wy[j]);
            }
        }
        sum.store(rows, x);
    }
}

// A whole-pixel mapping: each target pixel is one source pixel, copied.
void CopyRow(const AffineSource& s, std::uint8_t* const rows[4], int width, const AffineMatrix& m,
             int y) {
    long ix = std::lround(m.xy * y + m.x0);
    long iy = std::lround(m.yy * y + m.y0);
    const long dx = std::lround(m.xx);
    const long dy = std::lround(m.yx);
    for (int x = 0; x < width; ++x, ix += dx, iy += dy) {
        if (ix < 0 || iy < 0 || ix >= s.width || iy >= s.height) {
            ClearPixel(rows, x);
            continue;
        }
        const std::size_t at =
            static_cast<std::size_t>(iy) * s.stride + static_cast<std::size_t>(ix);
        for (int c = 0; c < 3; ++c) {
            rows[c][x] = s.planes[c][at];
        }
        rows[3][x] = s.coverage != nullptr ? s.coverage[at] : 255;
    }
}

bool IsWhole(double value) {
    return std::abs(value - std::round(value)) < 1e-9;
}

}  // namespace

bool IsExactCopy(const AffineMatrix& m) {
    const double linear[4] = {m.xx, m.xy, m.yx, m.yy};
    for (double value : linear) {
        if (!IsWhole(value) || std::abs(value) > 1) {
            return false;
        }
    }
    const bool swapsAxes = m.xx == 0 && m.yy == 0 && std::abs(m.xy) == 1 && std::abs(m.yx) == 1;
    const bool keepsAxes = m.xy == 0 && m.yx == 0 && std::abs(m.xx) == 1 && std::abs(m.yy) == 1;
    return (swapsAxes || keepsAxes) && IsWhole(m.x0) && IsWhole(m.y0);
}

void AffineResample(const AffineSource& source, const AffineTarget& target,
                    const AffineMatrix& inverse, Sampling sampling, int firstRow, int endRow) {
    const bool exact = IsExactCopy(inverse);
    for (int y = firstRow; y < endRow; ++y) {
        const std::size_t offset = static_cast<std::size_t>(y) * target.stride;
        std::uint8_t* const rows[4] = {target.planes[0] + offset, target.planes[1] + offset,
                                       target.planes[2] + offset, target.coverage + offset};
        if (exact) {
            CopyRow(source, rows, target.width, inverse, y);
        } else if (sampling == Sampling::Bicubic) {
            BicubicRow(source, rows, target.width, inverse, y);
        } else {
            BilinearRow(source, rows, target.width, RowStart(inverse, y));
        }
    }
}

}  // namespace wib
