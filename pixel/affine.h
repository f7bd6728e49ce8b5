// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// Where a target pixel takes its value from: target pixel (x, y) samples the
// source at (xx x + xy y + x0, yx x + yy y + y0), both in pixel indices (a
// source pixel's value sits at its own integer position).
struct AffineMatrix {
    double xx = 1, xy = 0, x0 = 0;
    double yx = 0, yy = 1, y0 = 0;
};

enum class Sampling { Bilinear = 0, Bicubic = 1 };

// A block of colour planes with its coverage (null: opaque everywhere), the
// pointers at its top-left pixel. Outside the block nothing is covered.
struct AffineSource {
    const std::uint8_t* planes[3];
    const std::uint8_t* coverage;
    std::size_t stride;
    int width;
    int height;
};

// The planes the resampled block goes to. Every target pixel is written: its
// coverage says how much of the block landed there, and its colour is the
// block's colour weighted by coverage (0 where nothing landed).
struct AffineTarget {
    std::uint8_t* planes[3];
    std::uint8_t* coverage;
    std::size_t stride;
    int width;
};

// Whether the matrix maps pixel indices onto pixel indices (a flip, a turn by
// a multiple of 90 degrees, a whole-pixel shift): such a transform is an exact
// copy and needs no sampling.
bool IsExactCopy(const AffineMatrix& inverse);

// Resamples target rows firstRow..endRow-1 from the source through `inverse`.
// Rows are independent, so callers may run bands of rows in parallel.
void AffineResample(const AffineSource& source, const AffineTarget& target,
                    const AffineMatrix& inverse, Sampling sampling, int firstRow, int endRow);

}  // namespace wib
