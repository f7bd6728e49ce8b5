// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_morphology.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "pixel/matte_ops.h"

namespace wib {

namespace {

// Half-widths of the disc's rows: row dy holds |dx| <= halfWidth[|dy|].
std::vector<int> DiscProfile(int radius) {
    std::vector<int> half(static_cast<std::size_t>(radius) + 1);
    const long long r2 = static_cast<long long>(radius) * radius;
    for (int dy = 0; dy <= radius; ++dy) {
        int w = static_cast<int>(std::sqrt(static_cast<double>(r2 - 1LL * dy * dy)));
        while (1LL * (w + 1) * (w + 1) + 1LL * dy * dy <= r2) {
            ++w;
        }
        while (w > 0 && 1LL * w * w + 1LL * dy * dy > r2) {
            --w;
        }
        half[static_cast<std::size_t>(dy)] = w;
    }
    return half;
}

// Running maximum over windows of 2 half + 1 values (van Herk / Gil-Werman:
// prefix and suffix maxima within blocks of the window's length), values
// beyond the row counting as 0. Folds the result into `out` by max.
class RowMaximum {
  public:
    explicit RowMaximum(int width, int radius)
        : width_(width),
          padded_(static_cast<std::size_t>(width + 2 * radius) + 1),
          prefix_(padded_.size()),
          suffix_(padded_.size()) {}

    void foldInto(const std::uint8_t* row, int half, std::uint8_t* out) {
        if (half == 0) {
            for (int x = 0; x < width_; ++x) {
                out[x] = std::max(out[x], row[x]);
            }
            return;
        }
        const int length = width_ + 2 * half;
        const int window = 2 * half + 1;
        std::memset(padded_.data(), 0, static_cast<std::size_t>(half));
        std::memcpy(padded_.data() + half, row, static_cast<std::size_t>(width_));
        std::memset(padded_.data() + half + width_, 0, static_cast<std::size_t>(half));
        for (int start = 0; start < length; start += window) {
            const int end = std::min(length, start + window);
            prefix_[start] = padded_[start];
            for (int i = start + 1; i < end; ++i) {
                prefix_[i] = std::max(prefix_[i - 1], padded_[i]);
            }
            suffix_[end - 1] = padded_[end - 1];
            for (int i = end - 2; i >= start; --i) {
                suffix_[i] = std::max(suffix_[i + 1], padded_[i]);
            }
        }
        // The window of x is padded [x, x + 2 half].
        for (int x = 0; x < width_; ++x) {
            out[x] = std::max(out[x], std::max(suffix_[x], prefix_[x + 2 * half]));
        }
    }

  private:
    int width_;
    std::vector<std::uint8_t> padded_;
    std::vector<std::uint8_t> prefix_;
    std::vector<std::uint8_t> suffix_;
};

}  // namespace

void GrowMatte(const MatteSource& source, std::uint8_t* target, std::size_t targetStride,
               int radius) {
    radius = std::max(0, radius);
    const std::vector<int> half = DiscProfile(radius);
    RowMaximum maximum(source.width, radius);
    for (int y = 0; y < source.height; ++y) {
        std::uint8_t* out = target + static_cast<std::size_t>(y) * targetStride;
        std::memset(out, 0, static_cast<std::size_t>(source.width));
        const int top = std::max(0, y - radius);
        const int bottom = std::min(source.height - 1, y + radius);
        for (int sy = top; sy <= bottom; ++sy) {
            maximum.foldInto(source.row(sy), half[static_cast<std::size_t>(std::abs(sy - y))], out);
        }
    }
}

void ShrinkMatte(const MatteSource& source, std::uint8_t* target, std::size_t targetStride,
                 int radius) {
    // The smallest value is 255 minus the largest of the inverted matte.
    const std::size_t stride = static_cast<std::size_t>(source.width);
    std::vector<std::uint8_t> inverted(stride * static_cast<std::size_t>(source.height));
    for (int y = 0; y < source.height; ++y) {
        std::uint8_t* row = inverted.data() + static_cast<std::size_t>(y) * stride;
        std::memcpy(row, source.row(y), stride);
        InvertMatteRow(row, source.width);
    }
    GrowMatte({inverted.data(), stride, source.width, source.height}, target, targetStride, radius);
    for (int y = 0; y < source.height; ++y) {
        InvertMatteRow(target + static_cast<std::size_t>(y) * targetStride, source.width);
    }
}

}  // namespace wib
