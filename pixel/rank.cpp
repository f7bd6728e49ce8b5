// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/rank.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace wib {

namespace {

// A histogram of a window with its median: `below` counts the values smaller
// than `median`, and the median is the value at sorted position `rank`.
class SlidingMedian {
  public:
    explicit SlidingMedian(int rank) : rank_(rank) {}

    void clear() {
        counts_.fill(0);
        median_ = 0;
        below_ = 0;
    }
    void add(int v) {
        ++counts_[static_cast<std::size_t>(v)];
        below_ += v < median_;
    }
    void remove(int v) {
        --counts_[static_cast<std::size_t>(v)];
        below_ -= v < median_;
    }
    int median() {
        while (below_ > rank_) {
            --median_;
            below_ -= counts_[static_cast<std::size_t>(median_)];
        }
        while (below_ + counts_[static_cast<std::size_t>(median_)] <= rank_) {
            below_ += counts_[static_cast<std::size_t>(median_)];
            ++median_;
        }
        return median_;
    }

  private:
    std::array<int, 256> counts_{};
    int rank_;
    int median_ = 0;
    int below_ = 0;
};

using PickRow = void (*)(std::uint8_t* out, const std::uint8_t* row, int width);

WIB_WINDOW_KERNEL void SmallerRow(std::uint8_t* out, const std::uint8_t* row, int width) {
    for (int x = 0; x < width; ++x) {
        out[x] = std::min(out[x], row[x]);
    }
}

WIB_WINDOW_KERNEL void LargerRow(std::uint8_t* out, const std::uint8_t* row, int width) {
    for (int x = 0; x < width; ++x) {
        out[x] = std::max(out[x], row[x]);
    }
}

// The window's extreme as a column pass (the rows above and below) into a
// row extended by the radius, then a row pass along it.
void ExtremeFilter(const PlaneBand& band, int radius, PickRow pick) {
    std::vector<std::uint8_t> column(static_cast<std::size_t>(band.width));
    std::vector<std::uint8_t> extended(static_cast<std::size_t>(band.width + 2 * radius));
    for (int y = band.first; y < band.end; ++y) {
        const std::uint8_t* centre = band.sourceRow(y);
        std::copy(centre, centre + band.width, column.begin());
        for (int k = 1; k <= radius; ++k) {
            pick(column.data(), band.sourceRow(y - k), band.width);
            pick(column.data(), band.sourceRow(y + k), band.width);
        }
        ExtendRow(column.data(), band.width, radius, extended.data());
        std::uint8_t* out = band.targetRow(y);
        std::copy(extended.begin(), extended.begin() + band.width, out);
        for (int k = 1; k <= 2 * radius; ++k) {
            pick(out, extended.data() + k, band.width);
        }
    }
}

}  // namespace

void MedianFilter(const PlaneBand& band, int radius) {
    const int size = 2 * radius + 1;
    SlidingMedian window(size * size / 2);
    const int last = band.width - 1;
    for (int y = band.first; y < band.end; ++y) {
        window.clear();
        for (int k = -radius; k <= radius; ++k) {
            const std::uint8_t* row = band.sourceRow(y + k);
            for (int i = -radius; i <= radius; ++i) {
                window.add(row[PlaneBand::ClampIndex(i, band.width)]);
            }
        }
        std::uint8_t* out = band.targetRow(y);
        out[0] = static_cast<std::uint8_t>(window.median());
        for (int x = 1; x < band.width; ++x) {
            const int leaving = std::max(x - radius - 1, 0);
            const int entering = std::min(x + radius, last);
            for (int k = -radius; k <= radius; ++k) {
                const std::uint8_t* row = band.sourceRow(y + k);
                window.remove(row[leaving]);
                window.add(row[entering]);
            }
            out[x] = static_cast<std::uint8_t>(window.median());
        }
    }
}

void MinimumFilter(const PlaneBand& band, int radius) {
    ExtremeFilter(band, radius, SmallerRow);
}

void MaximumFilter(const PlaneBand& band, int radius) {
    ExtremeFilter(band, radius, LargerRow);
}

void Despeckle(const PlaneBand& band, int threshold) {
    for (int y = band.first; y < band.end; ++y) {
        const std::uint8_t* rows[3] = {band.sourceRow(y - 1), band.sourceRow(y),
                                       band.sourceRow(y + 1)};
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            std::array<std::uint8_t, 9> window;
            for (int k = 0; k < 3; ++k) {
                for (int i = 0; i < 3; ++i) {
                    window[static_cast<std::size_t>(3 * k + i)] =
                        rows[k][PlaneBand::ClampIndex(x + i - 1, band.width)];
                }
            }
            std::nth_element(window.begin(), window.begin() + 4, window.end());
            const int median = window[4];
            const int pixel = rows[1][x];
            out[x] =
                static_cast<std::uint8_t>(std::abs(pixel - median) > threshold ? median : pixel);
        }
    }
}

}  // namespace wib
