// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/colour_palette.h"

#include <algorithm>
#include <limits>

namespace wib {

namespace {

constexpr int kMaxEntries = 256;
constexpr int kCells = 1 << 15;

std::uint32_t Packed(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    return (std::uint32_t{r} << 16) | (std::uint32_t{g} << 8) | b;
}

int CellOf(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    return ((r >> 3) << 10) | ((g >> 3) << 5) | (b >> 3);
}

int CellChannel(int cell, int channel) {
    return (cell >> (10 - 5 * channel)) & 31;
}

struct CellStats {
    std::uint64_t count = 0;
    std::array<std::uint64_t, 3> sum{};  // red, green, blue
};

struct Box {
    std::vector<int> cells;
    std::uint64_t count = 0;
};

// The colours of the image when there are no more than 256 of them.
std::vector<std::uint32_t> FewColours(const Plane& r, const Plane& g, const Plane& b, int width,
                                      int height) {
    std::vector<std::uint32_t> seen;
    std::uint32_t last = std::numeric_limits<std::uint32_t>::max();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t colour = Packed(r.row(y)[x], g.row(y)[x], b.row(y)[x]);
            if (colour == last) {
                continue;
            }
            last = colour;
            const auto at = std::lower_bound(seen.begin(), seen.end(), colour);
            if (at == seen.end() || *at != colour) {
                if (seen.size() == kMaxEntries) {
                    return {};
                }
                seen.insert(at, colour);
            }
        }
    }
    return seen;
}

int LongestSide(const Box& box) {
    std::array<int, 3> low{31, 31, 31}, high{0, 0, 0};
    for (int cell : box.cells) {
        for (int c = 0; c < 3; ++c) {
            low[c] = std::min(low[c], CellChannel(cell, c));
            high[c] = std::max(high[c], CellChannel(cell, c));
        }
    }
    int side = 0;
    for (int c = 1; c < 3; ++c) {
        if (high[c] - low[c] > high[side] - low[side]) {
            side = c;
        }
    }
    return side;
}

// Splits at the weighted median along the longest side; both halves keep at
// least one cell.
std::pair<Box, Box> Split(Box box, const std::vector<CellStats>& stats) {
    const int side = LongestSide(box);
    std::sort(box.cells.begin(), box.cells.end(),
              [side](int a, int b) { return CellChannel(a, side) < CellChannel(b, side); });
    std::uint64_t below = 0;
    std::size_t cut = 1;
    for (; cut < box.cells.size(); ++cut) {
        below += stats[static_cast<std::size_t>(box.cells[cut - 1])].count;
        if (below * 2 >= box.count) {
            break;
        }
    }
    cut = std::min(cut, box.cells.size() - 1);
    Box low, high;
    low.cells.assign(box.cells.begin(), box.cells.begin() + static_cast<std::ptrdiff_t>(cut));
    high.cells.assign(box.cells.begin() + static_cast<std::ptrdiff_t>(cut), box.cells.end());
    for (int cell : low.cells) {
        low.count += stats[static_cast<std::size_t>(cell)].count;
    }
    high.count = box.count - low.count;
    return {std::move(low), std::move(high)};
}

std::array<int, 3> MeanColour(const CellStats& stats) {
    std::array<int, 3> mean{};
    for (int c = 0; c < 3; ++c) {
        mean[c] = static_cast<int>((stats.sum[c] + stats.count / 2) / stats.count);
    }
    return mean;
}

}  // namespace

ColourPalette ColourPalette::Build(const Plane& r, const Plane& g, const Plane& b, int width,
                                   int height) {
    ColourPalette palette;
    palette.exact_ = FewColours(r, g, b, width, height);
    if (!palette.exact_.empty()) {
        palette.size_ = static_cast<int>(palette.exact_.size());
        for (std::size_t i = 0; i < palette.exact_.size(); ++i) {
            const std::uint32_t colour = palette.exact_[i];
            palette.entries_[3 * i] = static_cast<std::uint8_t>(colour & 0xFF);
            palette.entries_[3 * i + 1] = static_cast<std::uint8_t>((colour >> 8) & 0xFF);
            palette.entries_[3 * i + 2] = static_cast<std::uint8_t>(colour >> 16);
        }
        return palette;
    }

    std::vector<CellStats> stats(kCells);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint8_t cr = r.row(y)[x], cg = g.row(y)[x], cb = b.row(y)[x];
            CellStats& cell = stats[static_cast<std::size_t>(CellOf(cr, cg, cb))];
            ++cell.count;
            cell.sum[0] += cr;
            cell.sum[1] += cg;
            cell.sum[2] += cb;
        }
    }
    std::vector<Box> boxes(1);
    for (int cell = 0; cell < kCells; ++cell) {
        if (stats[static_cast<std::size_t>(cell)].count > 0) {
            boxes[0].cells.push_back(cell);
            boxes[0].count += stats[static_cast<std::size_t>(cell)].count;
        }
    }
    while (boxes.size() < kMaxEntries) {
        auto largest = boxes.end();
        for (auto it = boxes.begin(); it != boxes.end(); ++it) {
            if (it->cells.size() > 1 && (largest == boxes.end() || it->count > largest->count)) {
                largest = it;
            }
        }
        if (largest == boxes.end()) {
            break;
        }
        auto [low, high] = Split(std::move(*largest), stats);
        *largest = std::move(low);
        boxes.push_back(std::move(high));
    }

    palette.size_ = static_cast<int>(boxes.size());
    std::vector<std::array<int, 3>> colours;
    for (const Box& box : boxes) {
        CellStats total;
        for (int cell : box.cells) {
            const CellStats& one = stats[static_cast<std::size_t>(cell)];
            total.count += one.count;
            for (int c = 0; c < 3; ++c) {
                total.sum[c] += one.sum[c];
            }
        }
        const auto mean = MeanColour(total);
        const std::size_t i = colours.size();
        palette.entries_[3 * i] = static_cast<std::uint8_t>(mean[2]);
        palette.entries_[3 * i + 1] = static_cast<std::uint8_t>(mean[1]);
        palette.entries_[3 * i + 2] = static_cast<std::uint8_t>(mean[0]);
        colours.push_back(mean);
    }
    palette.cellEntry_.assign(kCells, 0);
    for (int cell = 0; cell < kCells; ++cell) {
        const CellStats& one = stats[static_cast<std::size_t>(cell)];
        if (one.count == 0) {
            continue;
        }
        const auto mean = MeanColour(one);
        int best = 0;
        int bestDistance = std::numeric_limits<int>::max();
        for (std::size_t i = 0; i < colours.size(); ++i) {
            int distance = 0;
            for (int c = 0; c < 3; ++c) {
                const int d = mean[c] - colours[i][c];
                distance += d * d;
            }
            if (distance < bestDistance) {
                bestDistance = distance;
                best = static_cast<int>(i);
            }
        }
        palette.cellEntry_[static_cast<std::size_t>(cell)] = static_cast<std::uint8_t>(best);
    }
    return palette;
}

void ColourPalette::mapRow(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b,
                           int count, std::uint8_t* indices) const {
    for (int x = 0; x < count; ++x) {
        if (exact_.empty()) {
            indices[x] = cellEntry_[static_cast<std::size_t>(CellOf(r[x], g[x], b[x]))];
        } else {
            const auto at =
                std::lower_bound(exact_.begin(), exact_.end(), Packed(r[x], g[x], b[x]));
            indices[x] = static_cast<std::uint8_t>(at - exact_.begin());
        }
    }
}

}  // namespace wib
