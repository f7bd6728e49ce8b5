// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/rank.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

#include "pixel/comparator_bytes.h"

#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {

namespace {

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

// Windows up to this radius go through comparator networks instead.
constexpr int kNetworkRadius = 2;
constexpr int kNetworkChunk = 512;
// Lanes hold a chunk with its window margin, rounded up to whole blocks, and
// one more block for the reads one and two columns along.
constexpr int kLaneLength = kNetworkChunk + 2 * ComparatorNetwork::kBlock;

int WholeBlocks(int length) {
    constexpr int block = ComparatorNetwork::kBlock;
    return (length + block - 1) / block * block;
}

// Window wires: the sorted run of columns 2j and 2j + 1 at 2 size j, each
// smallest first, then the last column sorted. Adds the steps that merge
// them as far as the median needs and returns the median's wire.
constexpr int BuildWindowNetwork(int size, ComparatorNetwork& window) {
    // Grown one wire at a time: a vector sized up front is filled in a way
    // that not every compiler accepts in a constant expression.
    const auto run = [](int first, int count) {
        std::vector<int> wires;
        for (int i = 0; i < count; ++i) {
            wires.push_back(first + i);
        }
        return wires;
    };
    std::vector<int> sorted = run((size - 1) * size, size);
    for (int j = 0; 2 * j + 1 < size; ++j) {
        sorted = window.merge(run(2 * size * j, 2 * size), sorted);
    }
    const int median = sorted[sorted.size() / 2];
    window.keepOnly({median});
    return median;
}

// The window stage of radius `Radius` as constants, so that its steps unroll
// and its wires stay in registers.
template <int Radius>
struct WindowSteps {
    static constexpr int kSize = 2 * Radius + 1;
    static constexpr int kWires = kSize * kSize;
    static constexpr std::size_t kCount = [] {
        ComparatorNetwork window;
        BuildWindowNetwork(kSize, window);
        return window.steps().size();
    }();
    static constexpr auto kSteps = [] {
        ComparatorNetwork window;
        BuildWindowNetwork(kSize, window);
        std::array<ComparatorStep, kCount> steps{};
        std::copy(window.steps().begin(), window.steps().end(), steps.begin());
        return steps;
    }();
    static constexpr int kMedian = [] {
        ComparatorNetwork window;
        return BuildWindowNetwork(kSize, window);
    }();
    static constexpr auto kReads = [] {
        ComparatorNetwork window;
        BuildWindowNetwork(kSize, window);
        std::array<bool, kWires> reads{};
        for (int i = 0; i < kWires; ++i) {
            reads[static_cast<std::size_t>(i)] = window.reads(i);
        }
        return reads;
    }();
};

template <typename Steps, std::size_t I>
WIB_INLINE void OrderWires(ComparatorBytes* w) {
    constexpr ComparatorStep step = Steps::kSteps[I];
    const ComparatorBytes a = w[step.low];
    const ComparatorBytes b = w[step.high];
    if constexpr (step.keepLow) {
        w[step.low] = a < b ? a : b;
    }
    if constexpr (step.keepHigh) {
        w[step.high] = a < b ? b : a;
    }
}

template <typename Steps, std::size_t I>
WIB_INLINE void LoadWire(ComparatorBytes* w, const std::uint8_t* const* sources, int t) {
    if constexpr (Steps::kReads[I]) {
        w[I] = LoadBytes(sources[I] + t);
    }
}

template <typename Steps, std::size_t... Wire, std::size_t... Step>
WIB_INLINE void WindowMedians(const std::uint8_t* const* sources, int run, std::uint8_t* out,
                              std::index_sequence<Wire...>, std::index_sequence<Step...>) {
    constexpr int block = kComparatorBlock;
    for (int t = 0; t < run; t += block) {
        ComparatorBytes w[Steps::kWires];
        (LoadWire<Steps, Wire>(w, sources, t), ...);
        (OrderWires<Steps, Step>(w), ...);
        if (t + block <= run) {
            StoreBytes(out + t, w[Steps::kMedian]);
        } else {
            std::uint8_t last[block];
            StoreBytes(last, w[Steps::kMedian]);
            std::copy(last, last + run - t, out + t);
        }
    }
}

// The medians of `run` windows, each block of them through the whole window
// stage in registers.
template <int Radius>
WIB_INLINE void WindowMedians(const std::uint8_t* const* sources, int run, std::uint8_t* out) {
    using Steps = WindowSteps<Radius>;
    WindowMedians<Steps>(sources, run, out, std::make_index_sequence<Steps::kWires>{},
                         std::make_index_sequence<Steps::kCount>{});
}

WIB_WINDOW_KERNEL void WindowMedians3(const std::uint8_t* const* sources, int run,
                                      std::uint8_t* out) {
    WindowMedians<1>(sources, run, out);
}

WIB_WINDOW_KERNEL void WindowMedians5(const std::uint8_t* const* sources, int run,
                                      std::uint8_t* out) {
    WindowMedians<2>(sources, run, out);
}

// The median in three stages, each shared by the windows that overlap: every
// column of `size` values is sorted once, every two neighbouring sorted
// columns are merged once, and each window merges the two-column runs and its
// last column only as far as its median needs.
struct MedianStages {
    explicit MedianStages(int radius) : size(2 * radius + 1) {
        std::vector<int> column(static_cast<std::size_t>(size));
        std::iota(column.begin(), column.end(), 0);
        columnOrder = columns.sort(column);
        std::vector<int> second(column);
        for (int& wire : second) {
            wire += size;
        }
        pairOrder = pairs.merge(column, second);
        ComparatorNetwork window;
        BuildWindowNetwork(size, window);
        std::vector<int> pairResults;
        for (int i = 0; i < 2 * size; ++i) {
            bool read = false;
            for (int j = 0; 2 * j + 1 < size; ++j) {
                read = read || window.reads(2 * size * j + i);
            }
            if (read) {
                pairResults.push_back(pairOrder[static_cast<std::size_t>(i)]);
            }
        }
        pairs.keepOnly(pairResults);
        std::vector<int> columnResults;
        for (int i = 0; i < size; ++i) {
            if (pairs.reads(i) || pairs.reads(size + i) || window.reads((size - 1) * size + i)) {
                columnResults.push_back(columnOrder[static_cast<std::size_t>(i)]);
            }
        }
        columns.keepOnly(columnResults);
    }

    int size;
    ComparatorNetwork columns;
    ComparatorNetwork pairs;
    std::vector<int> columnOrder;
    std::vector<int> pairOrder;
};

// A chunk of one row at a time, its window rows extended by the radius. Each
// stage reads the one before where it left its results, so nothing is copied.
void NetworkMedianRows(const PlaneBand& band, int radius, const MedianStages& stages) {
    const int size = stages.size;
    const auto lanes = [](int count) {
        return std::vector<std::uint8_t>(static_cast<std::size_t>(count) * kLaneLength);
    };
    const std::size_t padded = static_cast<std::size_t>(band.width + 2 * radius + kLaneLength);
    std::vector<std::uint8_t> extended(padded * static_cast<std::size_t>(size));
    std::vector<std::uint8_t> columnLanes = lanes(size);
    std::vector<std::uint8_t> pairLanes = lanes(2 * size);
    using Sources = std::vector<const std::uint8_t*>;
    Sources columnSources(static_cast<std::size_t>(size));
    Sources pairSources(static_cast<std::size_t>(2 * size));
    Sources windowSources(static_cast<std::size_t>(size * size));
    const auto at = [](Sources& sources, int wire) -> const std::uint8_t*& {
        return sources[static_cast<std::size_t>(wire)];
    };
    // Each source row is extended once, into a ring of the window's rows.
    const auto extendedRow = [&](int y) {
        return extended.data() + static_cast<std::size_t>((y + size) % size) * padded;
    };
    for (int y = band.first - radius; y < band.first + radius; ++y) {
        ExtendRow(band.sourceRow(y), band.width, radius, extendedRow(y));
    }
    for (int y = band.first; y < band.end; ++y) {
        ExtendRow(band.sourceRow(y + radius), band.width, radius, extendedRow(y + radius));
        std::uint8_t* out = band.targetRow(y);
        for (int x0 = 0; x0 < band.width; x0 += kNetworkChunk) {
            const int run = std::min(kNetworkChunk, band.width - x0);
            const int margin = WholeBlocks(run + 2 * radius);
            for (int k = 0; k < size; ++k) {
                at(columnSources, k) = extendedRow(y + k - radius) + x0;
            }
            stages.columns.run(columnSources.data(), columnLanes.data(), kLaneLength, margin);
            for (int i = 0; i < size; ++i) {
                const std::uint8_t* sorted =
                    stages.columns.result(stages.columnOrder[static_cast<std::size_t>(i)],
                                          columnSources.data(), columnLanes.data(), kLaneLength);
                at(pairSources, i) = sorted;
                at(pairSources, size + i) = sorted + 1;
                at(windowSources, (size - 1) * size + i) = sorted + size - 1;
            }
            stages.pairs.run(pairSources.data(), pairLanes.data(), kLaneLength, margin);
            for (int i = 0; i < 2 * size; ++i) {
                const std::uint8_t* merged =
                    stages.pairs.result(stages.pairOrder[static_cast<std::size_t>(i)],
                                        pairSources.data(), pairLanes.data(), kLaneLength);
                for (int j = 0; 2 * j + 1 < size; ++j) {
                    at(windowSources, 2 * size * j + i) = merged + 2 * j;
                }
            }
            if (radius == 1) {
                WindowMedians3(windowSources.data(), run, out + x0);
            } else {
                WindowMedians5(windowSources.data(), run, out + x0);
            }
        }
    }
}

// Histogram counts as one vector of 16 lanes, each lane the count of the
// values up to its bin: a coarse histogram (values by their upper four bits)
// or the fine counts inside one coarse bin. Counting cumulatively turns the
// median search into comparisons with no branches.
using Counts = std::int16_t __attribute__((vector_size(32)));
using HalfCounts = std::int16_t __attribute__((vector_size(16)));

// The histogram of one image column over the window's rows, aligned for the
// widest vectors whichever build of the kernel runs.
struct alignas(32) ColumnHistogram {
    Counts coarse;
    std::array<Counts, 16> fine;
};

// Output columns worked on together: their column histograms, with the
// window margin, stay in the core's cache from row to row.
constexpr int kHistogramStrip = 512;

// Adds `sign` (1 or -1) times value v to a column's cumulative counts: every
// lane at or above v's bin counts it.
WIB_INLINE void CountValue(ColumnHistogram& column, const Counts& lanes, int v, std::int16_t sign) {
    const Counts coarse = lanes >= static_cast<std::int16_t>(v >> 4);
    const Counts fine = lanes >= static_cast<std::int16_t>(v & 15);
    column.coarse -= sign * coarse;
    column.fine[static_cast<std::size_t>(v >> 4)] -= sign * fine;
}

// The number of lanes counting no more than `limit`: as the counts are
// cumulative, the first bin that holds the value at sorted position `limit`.
WIB_INLINE int LanesAtMost(const Counts& cumulative, int limit) {
    const Counts at = cumulative <= static_cast<std::int16_t>(limit);
    HalfCounts half = __builtin_shufflevector(at, at, 0, 1, 2, 3, 4, 5, 6, 7) +
                      __builtin_shufflevector(at, at, 8, 9, 10, 11, 12, 13, 14, 15);
    half += __builtin_shufflevector(half, half, 4, 5, 6, 7, 0, 1, 2, 3);
    half += __builtin_shufflevector(half, half, 2, 3, 0, 1, 4, 5, 6, 7);
    half += __builtin_shufflevector(half, half, 1, 0, 2, 3, 4, 5, 6, 7);
    return -half[0];
}

// The constant-time median: each column's histogram moves down one row at a
// time, and the window's histogram moves along the row by adding the column
// entering and taking away the one leaving. The window keeps its coarse
// counts up to date and each coarse bin's fine counts only when the median
// falls in that bin, catching up on the columns it missed.
WIB_WINDOW_KERNEL void HistogramMedianStrip(const PlaneBand& band, int radius, int x0, int run,
                                            std::vector<ColumnHistogram>& columns,
                                            std::vector<int>& sourceColumns) {
    const int size = 2 * radius + 1;
    const int count = run + 2 * radius;
    const int rank = size * size / 2;
    const Counts lanes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int e = 0; e < count; ++e) {
        sourceColumns[static_cast<std::size_t>(e)] =
            PlaneBand::ClampIndex(x0 - radius + e, band.width);
        columns[static_cast<std::size_t>(e)] = ColumnHistogram{};
    }
    ColumnHistogram* column = columns.data();
    const int* source = sourceColumns.data();
    for (int k = -radius; k <= radius; ++k) {
        const std::uint8_t* row = band.sourceRow(band.first + k);
        for (int e = 0; e < count; ++e) {
            CountValue(column[e], lanes, row[source[e]], 1);
        }
    }
    for (int y = band.first; y < band.end; ++y) {
        const std::uint8_t* leaving = band.sourceRow(y - radius - 1);
        const std::uint8_t* entering = band.sourceRow(y + radius);
        // Past the top and bottom rows the same border row leaves and enters.
        if (y > band.first && leaving != entering) {
            for (int e = 0; e < count; ++e) {
                CountValue(column[e], lanes, leaving[source[e]], -1);
                CountValue(column[e], lanes, entering[source[e]], 1);
            }
        }
        Counts coarse{};
        for (int e = 0; e < size; ++e) {
            coarse += column[e].coarse;
        }
        std::array<Counts, 16> fine{};
        std::array<int, 16> fineAt;
        fineAt.fill(-size);
        std::uint8_t* out = band.targetRow(y) + x0;
        for (int x = 0; x < run; ++x) {
            if (x > 0) {
                coarse += column[x + size - 1].coarse - column[x - 1].coarse;
            }
            const int bin = LanesAtMost(coarse, rank);
            const auto b = static_cast<std::size_t>(bin);
            Counts& counts = fine[b];
            const int missed = x - fineAt[b];
            if (2 * missed > size) {
                counts = Counts{};
                for (int e = x; e < x + size; ++e) {
                    counts += column[e].fine[b];
                }
            } else {
                for (int j = fineAt[b]; j < x; ++j) {
                    counts += column[j + size].fine[b] - column[j].fine[b];
                }
            }
            fineAt[b] = x;
            const int below = bin > 0 ? coarse[bin - 1] : 0;
            out[x] = static_cast<std::uint8_t>(16 * bin + LanesAtMost(counts, rank - below));
        }
    }
}

void HistogramMedianRows(const PlaneBand& band, int radius) {
    if (band.first >= band.end) {
        return;
    }
    const std::size_t count = static_cast<std::size_t>(kHistogramStrip + 2 * radius);
    std::vector<ColumnHistogram> columns(count);
    std::vector<int> sourceColumns(count);
    for (int x0 = 0; x0 < band.width; x0 += kHistogramStrip) {
        HistogramMedianStrip(band, radius, x0, std::min(kHistogramStrip, band.width - x0), columns,
                             sourceColumns);
    }
}

}  // namespace

void MedianFilter(const PlaneBand& band, int radius) {
    if (radius <= kNetworkRadius) {
        NetworkMedianRows(band, radius, MedianStages(radius));
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
