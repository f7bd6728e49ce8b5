// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/convolve.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {

namespace {

// The sum of kernel times window at x, in 16-bit lanes when the largest
// possible sum fits them (the common small kernels), else in 32-bit ones.
template <int Size, typename Sum>
WIB_INLINE Sum WindowSum(const Sum* const* rows, const Sum* weights, int x) {
    Sum sum = 0;
    for (int k = 0; k < Size; ++k) {
        for (int i = 0; i < Size; ++i) {
            sum = static_cast<Sum>(sum + weights[k * Size + i] * rows[k][x + i]);
        }
    }
    return sum;
}

// One output row, all the taps of a pixel and its store in one loop along
// the row, so that each sum stays in a register. The quotient is truncated
// toward zero: an exact integer divided in floating point is correctly
// rounded, and a quotient that is not whole lies at least 1 / |divisor| from
// the next whole number, so the conversion's truncation gives the integer
// quotient whenever the largest sum fits the mantissa: single precision
// below 2^24, double always.
template <int Size, typename Sum, typename Real>
WIB_INLINE void ConvolveRow(const Sum* const* rows, const Sum* weights, int width, int divisor,
                            int offset, std::uint8_t* __restrict out) {
    if (divisor == 1) {
        for (int x = 0; x < width; ++x) {
            const int sum = WindowSum<Size>(rows, weights, x);
            out[x] = static_cast<std::uint8_t>(std::clamp(sum + offset, 0, 255));
        }
        return;
    }
    const Real d = static_cast<Real>(divisor);
    for (int x = 0; x < width; ++x) {
        const Real sum = static_cast<Real>(WindowSum<Size>(rows, weights, x));
        const int q = static_cast<int>(sum / d);
        out[x] = static_cast<std::uint8_t>(std::clamp(q + offset, 0, 255));
    }
}

// Each source row is extended once into a ring of `Size` rows.
template <int Size, typename Sum, typename Real>
WIB_INLINE void ConvolveRows(const PlaneBand& band, const int* kernel, int divisor, int offset) {
    constexpr int radius = Size / 2;
    const std::size_t padded = static_cast<std::size_t>(band.width + 2 * radius);
    std::vector<Sum> ring(padded * Size);
    Sum weights[Size * Size];
    std::copy(kernel, kernel + Size * Size, weights);
    const auto ringRow = [&](int y) {
        return ring.data() + static_cast<std::size_t>((y + Size) % Size) * padded;
    };
    for (int y = band.first - radius; y < band.first + radius; ++y) {
        ExtendRow(band.sourceRow(y), band.width, radius, ringRow(y));
    }
    const Sum* rows[Size];
    for (int y = band.first; y < band.end; ++y) {
        ExtendRow(band.sourceRow(y + radius), band.width, radius, ringRow(y + radius));
        for (int k = 0; k < Size; ++k) {
            rows[k] = ringRow(y + k - radius);
        }
        ConvolveRow<Size, Sum, Real>(rows, weights, band.width, divisor, offset, band.targetRow(y));
    }
}

template <typename Sum, typename Real>
WIB_INLINE void ConvolveSize(const PlaneBand& band, const int* kernel, int size, int divisor,
                             int offset) {
    if (size == 3) {
        ConvolveRows<3, Sum, Real>(band, kernel, divisor, offset);
    } else {
        ConvolveRows<5, Sum, Real>(band, kernel, divisor, offset);
    }
}

WIB_WINDOW_KERNEL void ConvolveShort(const PlaneBand& band, const int* kernel, int size,
                                     int divisor, int offset) {
    ConvolveSize<std::int16_t, float>(band, kernel, size, divisor, offset);
}

WIB_WINDOW_KERNEL void ConvolveFloat(const PlaneBand& band, const int* kernel, int size,
                                     int divisor, int offset) {
    ConvolveSize<std::int32_t, float>(band, kernel, size, divisor, offset);
}

WIB_WINDOW_KERNEL void ConvolveDouble(const PlaneBand& band, const int* kernel, int size,
                                      int divisor, int offset) {
    ConvolveSize<std::int32_t, double>(band, kernel, size, divisor, offset);
}

}  // namespace

void Convolve(const PlaneBand& band, const int* kernel, int size, int divisor, int offset) {
    long long largest = 0;
    for (int i = 0; i < size * size; ++i) {
        largest += 255LL * std::abs(kernel[i]);
    }
    if (largest < (1 << 15)) {
        ConvolveShort(band, kernel, size, divisor, offset);
    } else if (largest < (1 << 24)) {
        ConvolveFloat(band, kernel, size, divisor, offset);
    } else {
        ConvolveDouble(band, kernel, size, divisor, offset);
    }
}

}  // namespace wib
