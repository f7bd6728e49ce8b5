// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/convolve.h"

#include <vector>

namespace wib {

namespace {

WIB_WINDOW_KERNEL void AddTap(std::int32_t* sums, const std::int32_t* extended, int weight,
                              int width) {
    for (int x = 0; x < width; ++x) {
        sums[x] += weight * extended[x];
    }
}

// An exact integer divided in double is correctly rounded, and a quotient
// that is not whole lies at least 1 / |divisor| from the next whole number, so
// the conversion's truncation gives the integer quotient.
WIB_WINDOW_KERNEL void StoreQuotients(const std::int32_t* sums, int width, int divisor, int offset,
                                      std::uint8_t* out) {
    const double d = divisor;
    for (int x = 0; x < width; ++x) {
        const int value = static_cast<int>(sums[x] / d) + offset;
        out[x] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    }
}

}  // namespace

void Convolve(const PlaneBand& band, const int* kernel, int size, int divisor, int offset) {
    const int radius = size / 2;
    const std::size_t padded = static_cast<std::size_t>(band.width + 2 * radius);
    std::vector<std::int32_t> extended(padded * static_cast<std::size_t>(size));
    std::vector<std::int32_t> sums(static_cast<std::size_t>(band.width));
    for (int y = band.first; y < band.end; ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        for (int k = 0; k < size; ++k) {
            std::int32_t* row = extended.data() + static_cast<std::size_t>(k) * padded;
            ExtendRow(band.sourceRow(y + k - radius), band.width, radius, row);
            for (int i = 0; i < size; ++i) {
                AddTap(sums.data(), row + i, kernel[k * size + i], band.width);
            }
        }
        StoreQuotients(sums.data(), band.width, divisor, offset, band.targetRow(y));
    }
}

}  // namespace wib
