// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/flood_fill.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "pixel/plane_band.h"

namespace wib {

namespace {

// Mask values while the region is being found: a matching pixel not yet
// reached, and a pixel of the region.
constexpr std::uint8_t kCandidate = 1;
constexpr std::uint8_t kInside = 255;

// A run of region pixels, inclusive, whose neighbour rows are still to scan.
// It was found from the row y - down (down 0 for the seed), whose run
// parentLeft..parentRight is already in the region and need not be scanned
// again.
struct Span {
    int y;
    int left;
    int right;
    int down;
    int parentLeft;
    int parentRight;
};

// Runs this short are searched byte by byte rather than through memchr.
constexpr int kShortRun = 32;

// Writes `mark` where a pixel matches the seed colour, 0 elsewhere. Branch-free
// so that it vectorises.
WIB_WINDOW_KERNEL void MarkMatchesRow(const std::uint8_t* r, const std::uint8_t* g,
                                      const std::uint8_t* b, const std::uint8_t seed[3],
                                      int tolerance, std::uint8_t mark, std::uint8_t* out,
                                      int width) {
    const std::uint8_t sr = seed[0];
    const std::uint8_t sg = seed[1];
    const std::uint8_t sb = seed[2];
    const auto limit = static_cast<std::uint8_t>(tolerance);
    for (int x = 0; x < width; ++x) {
        const std::uint8_t dr = static_cast<std::uint8_t>(std::max(r[x], sr) - std::min(r[x], sr));
        const std::uint8_t dg = static_cast<std::uint8_t>(std::max(g[x], sg) - std::min(g[x], sg));
        const std::uint8_t db = static_cast<std::uint8_t>(std::max(b[x], sb) - std::min(b[x], sb));
        const std::uint8_t d = std::max(dr, std::max(dg, db));
        out[x] = d <= limit ? mark : 0;
    }
}

WIB_WINDOW_KERNEL void KeepInsideRow(std::uint8_t* row, int width) {
    for (int x = 0; x < width; ++x) {
        row[x] = row[x] == kInside ? kInside : 0;
    }
}

bool EightCandidates(const std::uint8_t* at) {
    constexpr std::uint64_t kAll = 0x0101010101010101ULL;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word == kAll;
}

// Turns the run of candidates through x into region pixels and returns it.
Span Claim(std::uint8_t* row, int x, int width, int y) {
    int left = x;
    while (left >= 8 && EightCandidates(row + left - 8)) {
        left -= 8;
    }
    while (left > 0 && row[left - 1] == kCandidate) {
        --left;
    }
    int right = x;
    while (right + 8 < width && EightCandidates(row + right + 1)) {
        right += 8;
    }
    while (right + 1 < width && row[right + 1] == kCandidate) {
        ++right;
    }
    std::memset(row + left, kInside, static_cast<std::size_t>(right - left + 1));
    return {y, left, right, 0, 0, -1};
}

class RegionWalk {
  public:
    RegionWalk(std::uint8_t* mask, std::size_t stride, int width, int height, bool eight)
        : mask_(mask), stride_(stride), width_(width), height_(height), reach_(eight ? 1 : 0) {}

    std::size_t run(int seedX, int seedY) {
        push(Claim(row(seedY), seedX, width_, seedY));
        while (!pending_.empty()) {
            const Span span = pending_.back();
            pending_.pop_back();
            const int from = std::max(0, span.left - reach_);
            const int to = std::min(width_ - 1, span.right + reach_);
            for (const int step : {-1, 1}) {
                const int y = span.y + step;
                if (y < 0 || y >= height_) {
                    continue;
                }
                if (step != -span.down) {
                    scan(y, from, to, span);
                    continue;
                }
                // Back towards the parent: only beyond its run.
                scan(y, from, std::min(to, span.parentLeft - 1), span);
                scan(y, std::max(from, span.parentRight + 1), to, span);
            }
        }
        return count_;
    }

  private:
    std::uint8_t* row(int y) { return mask_ + static_cast<std::size_t>(y) * stride_; }

    void push(const Span& span) {
        count_ += static_cast<std::size_t>(span.right - span.left + 1);
        pending_.push_back(span);
    }

    // The first candidate in columns x..to of the row, or to + 1.
    static int NextCandidate(const std::uint8_t* line, int x, int to) {
        if (to - x < kShortRun) {
            while (x <= to && line[x] != kCandidate) {
                ++x;
            }
            return x;
        }
        const void* hit = std::memchr(line + x, kCandidate, static_cast<std::size_t>(to - x + 1));
        return hit == nullptr ? to + 1
                              : static_cast<int>(static_cast<const std::uint8_t*>(hit) - line);
    }

    // Claims every run of candidates that touches columns from..to of row y,
    // found from `parent`.
    void scan(int y, int from, int to, const Span& parent) {
        std::uint8_t* line = row(y);
        for (int x = NextCandidate(line, from, to); x <= to; x = NextCandidate(line, x, to)) {
            Span span = Claim(line, x, width_, y);
            span.down = y - parent.y;
            span.parentLeft = parent.left;
            span.parentRight = parent.right;
            push(span);
            x = span.right + 1;
        }
    }

    std::uint8_t* mask_;
    std::size_t stride_;
    int width_;
    int height_;
    int reach_;
    std::vector<Span> pending_;
    std::size_t count_ = 0;
};

}  // namespace

std::size_t FindRegion(const RgbPlanes& image, int seedX, int seedY, const RegionRule& rule,
                       std::uint8_t* mask, std::size_t maskStride) {
    const int width = image.width;
    const int height = image.height;
    const bool seedInside = seedX >= 0 && seedY >= 0 && seedX < width && seedY < height;
    if (!seedInside) {
        for (int y = 0; y < height; ++y) {
            std::memset(mask + static_cast<std::size_t>(y) * maskStride, 0,
                        static_cast<std::size_t>(width));
        }
        return 0;
    }
    const std::size_t at = static_cast<std::size_t>(seedY) * image.stride + seedX;
    const std::uint8_t seed[3] = {image.planes[0][at], image.planes[1][at], image.planes[2][at]};
    const std::uint8_t mark = rule.contiguous ? kCandidate : kInside;
    const int tolerance = std::clamp(rule.tolerance, 0, 255);
    std::size_t count = 0;
    for (int y = 0; y < height; ++y) {
        const std::size_t offset = static_cast<std::size_t>(y) * image.stride;
        std::uint8_t* out = mask + static_cast<std::size_t>(y) * maskStride;
        MarkMatchesRow(image.planes[0] + offset, image.planes[1] + offset, image.planes[2] + offset,
                       seed, tolerance, mark, out, width);
        if (!rule.contiguous) {
            count += static_cast<std::size_t>(std::count(out, out + width, kInside));
        }
    }
    if (!rule.contiguous) {
        return count;
    }
    count = RegionWalk(mask, maskStride, width, height, rule.eightConnected).run(seedX, seedY);
    for (int y = 0; y < height; ++y) {
        KeepInsideRow(mask + static_cast<std::size_t>(y) * maskStride, width);
    }
    return count;
}

}  // namespace wib
