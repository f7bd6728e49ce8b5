// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/rank.h"

#include <array>
#include <cstdlib>
#include <utility>
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

// Windows up to this radius go through a sorting network instead.
constexpr int kNetworkRadius = 2;
constexpr int kNetworkChunk = 256;

using Comparators = std::vector<std::pair<int, int>>;

// The comparators of Batcher's odd-even merge sort of `count` values that
// decide sorted position `rank`. Those reaching past `count` only meet the
// (implicit) largest values there and change nothing, so they go; so do those
// whose outputs nothing needed reads.
Comparators MedianNetwork(int count, int rank) {
    int n = 1;
    while (n < count) {
        n <<= 1;
    }
    Comparators all;
    for (int p = 1; p < n; p <<= 1) {
        for (int k = p; k >= 1; k >>= 1) {
            for (int j = k % p; j + k < n; j += 2 * k) {
                for (int i = 0; i < k && i + j + k < count; ++i) {
                    if ((i + j) / (2 * p) == (i + j + k) / (2 * p)) {
                        all.emplace_back(i + j, i + j + k);
                    }
                }
            }
        }
    }
    std::vector<bool> needed(static_cast<std::size_t>(count));
    needed[static_cast<std::size_t>(rank)] = true;
    Comparators kept;
    for (auto it = all.rbegin(); it != all.rend(); ++it) {
        const auto a = static_cast<std::size_t>(it->first);
        const auto b = static_cast<std::size_t>(it->second);
        if (needed[a] || needed[b]) {
            needed[a] = needed[b] = true;
            kept.push_back(*it);
        }
    }
    return {kept.rbegin(), kept.rend()};
}

// Each window's values in lanes of kNetworkChunk pixels, put through the
// network with byte-wide min and max.
WIB_WINDOW_KERNEL void NetworkMedianRows(const PlaneBand& band, int radius,
                                         const Comparators& network) {
    const int size = 2 * radius + 1;
    const int count = size * size;
    const std::size_t padded = static_cast<std::size_t>(band.width + 2 * radius);
    std::vector<std::uint8_t> extended(padded * static_cast<std::size_t>(size));
    std::vector<std::uint8_t> lanes(static_cast<std::size_t>(count * kNetworkChunk));
    const auto lane = [&lanes](int i) { return lanes.data() + i * kNetworkChunk; };
    for (int y = band.first; y < band.end; ++y) {
        for (int k = 0; k < size; ++k) {
            ExtendRow(band.sourceRow(y + k - radius), band.width, radius,
                      extended.data() + static_cast<std::size_t>(k) * padded);
        }
        std::uint8_t* out = band.targetRow(y);
        for (int x0 = 0; x0 < band.width; x0 += kNetworkChunk) {
            const int run = std::min(kNetworkChunk, band.width - x0);
            for (int k = 0; k < size; ++k) {
                for (int i = 0; i < size; ++i) {
                    const std::uint8_t* from =
                        extended.data() + static_cast<std::size_t>(k) * padded + x0 + i;
                    std::copy(from, from + run, lane(k * size + i));
                }
            }
            for (const auto& [a, b] : network) {
                std::uint8_t* low = lane(a);
                std::uint8_t* high = lane(b);
                for (int t = 0; t < kNetworkChunk; ++t) {
                    const std::uint8_t l = std::min(low[t], high[t]);
                    high[t] = std::max(low[t], high[t]);
                    low[t] = l;
                }
            }
            std::copy(lane(count / 2), lane(count / 2) + run, out + x0);
        }
    }
}

void HistogramMedianRows(const PlaneBand& band, int radius) {
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

}  // namespace

void MedianFilter(const PlaneBand& band, int radius) {
    if (radius <= kNetworkRadius) {
        const int count = (2 * radius + 1) * (2 * radius + 1);
        NetworkMedianRows(band, radius, MedianNetwork(count, count / 2));
    } else {
        HistogramMedianRows(band, radius);
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
