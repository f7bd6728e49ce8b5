// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/gaussian.h"

#include <cmath>
#include <vector>

namespace wib {

namespace {

// From this sigma on the box passes are both faster and accurate enough.
constexpr double kBoxPassesFrom = 3.0;
constexpr int kBoxPasses = 4;
// Rows filtered together along their length.
constexpr int kGroup = 16;
// Columns filtered together down their length.
constexpr int kStrip = 64;

// The kernel is symmetric, so each weight w[k] takes the pair at -k and +k:
// half the multiplications.
WIB_WINDOW_KERNEL void ColumnSums(const PlaneBand& band, int y, const float* weights, int radius,
                                  float* sum) {
    const std::uint8_t* centre = band.sourceRow(y);
    for (int x = 0; x < band.width; ++x) {
        sum[x] = weights[0] * static_cast<float>(centre[x]);
    }
    for (int k = 1; k <= radius; ++k) {
        const std::uint8_t* above = band.sourceRow(y - k);
        const std::uint8_t* below = band.sourceRow(y + k);
        const float w = weights[k];
        for (int x = 0; x < band.width; ++x) {
            sum[x] += w * static_cast<float>(above[x] + below[x]);
        }
    }
}

// Tap pair by tap pair along the whole row, so that each step is one vector
// loop; `extended` holds the row with `radius` border values each side.
WIB_WINDOW_KERNEL void RowSums(const float* extended, const float* weights, int radius, int width,
                               float* sum, std::uint8_t* out) {
    const float* centre = extended + radius;
    for (int x = 0; x < width; ++x) {
        sum[x] = weights[0] * centre[x];
    }
    for (int k = 1; k <= radius; ++k) {
        const float w = weights[k];
        for (int x = 0; x < width; ++x) {
            sum[x] += w * (centre[x - k] + centre[x + k]);
        }
    }
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<std::uint8_t>(std::clamp(sum[x], 0.0f, 255.0f) + 0.5f);
    }
}

// The kernel to 3 sigma, normalised: what it leaves out beyond is 0.3 % of
// the weight, far below a level after rounding.
void DirectGaussian(const PlaneBand& band, double sigma) {
    const int radius = std::max(1, static_cast<int>(std::ceil(3 * sigma)));
    std::vector<float> weights(static_cast<std::size_t>(radius + 1));
    double total = 0;
    for (int k = -radius; k <= radius; ++k) {
        total += std::exp(-k * k / (2 * sigma * sigma));
    }
    for (int k = 0; k <= radius; ++k) {
        weights[static_cast<std::size_t>(k)] =
            static_cast<float>(std::exp(-k * k / (2 * sigma * sigma)) / total);
    }
    std::vector<float> sums(static_cast<std::size_t>(band.width));
    std::vector<float> extended(static_cast<std::size_t>(band.width + 2 * radius));
    for (int y = band.first; y < band.end; ++y) {
        ColumnSums(band, y, weights.data(), radius, sums.data());
        ExtendRow(sums.data(), band.width, radius, extended.data());
        RowSums(extended.data(), weights.data(), radius, band.width, sums.data(),
                band.targetRow(y));
    }
}

// A box of radius r with extra taps of weight `alpha` at +-(r + 1), all
// scaled by `scale`: its variance can be any value, not only r (r + 1) / 3.
struct ExtendedBox {
    int radius = 0;
    float alpha = 0;
    float scale = 1;

    int reach() const { return radius + 1; }
};

ExtendedBox MatchVariance(double variance) {
    ExtendedBox box;
    while ((box.radius + 1) * (box.radius + 2) / 3.0 <= variance) {
        ++box.radius;
    }
    const double r = box.radius;
    const double alpha =
        (2 * r + 1) * (r * (r + 1) / 3 - variance) / (2 * (variance - (r + 1) * (r + 1)));
    box.alpha = static_cast<float>(alpha);
    box.scale = static_cast<float>(1 / (2 * r + 1 + 2 * alpha));
    return box;
}

// Floats `stride` apart from row to row.
struct Rows {
    float* data;
    std::size_t stride;

    float* row(int y) const { return data + static_cast<std::size_t>(y) * stride; }
};

// One pass down the columns of `rows` rows of `width` floats: out row i is the
// box centred on in row i + reach, for every i with the whole box inside.
WIB_WINDOW_KERNEL void BoxPassDown(Rows in, int rows, int width, const ExtendedBox& box,
                                   float* inner, Rows out) {
    const int span = 2 * box.reach();
    std::fill(inner, inner + width, 0.0f);
    for (int j = 1; j < span; ++j) {
        const float* r = in.row(j);
        for (int x = 0; x < width; ++x) {
            inner[x] += r[x];
        }
    }
    for (int i = 0; i + span < rows; ++i) {
        const float* top = in.row(i);
        const float* next = in.row(i + 1);
        const float* bottom = in.row(i + span);
        float* o = out.row(i);
        for (int x = 0; x < width; ++x) {
            o[x] = box.scale * (inner[x] + box.alpha * (top[x] + bottom[x]));
            inner[x] += bottom[x] - next[x];
        }
    }
}

WIB_WINDOW_KERNEL void StoreRow(const float* in, int width, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<std::uint8_t>(std::clamp(in[x], 0.0f, 255.0f) + 0.5f);
    }
}

// Passes over the image extended by the passes' whole reach, so each pass
// sees the replicated border exactly as one kernel over the image would.
void BoxPassGaussian(const PlaneBand& band, double sigma) {
    const ExtendedBox box = MatchVariance(sigma * sigma / kBoxPasses);
    const int reach = kBoxPasses * box.reach();
    const int width = band.width;
    const int rows = band.end - band.first + 2 * reach;
    // The passes along the rows run down the columns of a transposed group of
    // rows, so that they too are vector loops across independent sums.
    const int length = width + 2 * reach;
    std::vector<float> groupA(static_cast<std::size_t>(length) * kGroup);
    std::vector<float> groupB(groupA.size());
    std::vector<float> planeA(static_cast<std::size_t>(rows) * static_cast<std::size_t>(width));
    std::vector<float> stripA(static_cast<std::size_t>(rows) * kStrip);
    std::vector<float> stripB(stripA.size());
    std::vector<float> inner(static_cast<std::size_t>(std::max(width, kGroup)));
    for (int i0 = 0; i0 < rows; i0 += kGroup) {
        const int group = std::min(kGroup, rows - i0);
        for (int r = 0; r < group; ++r) {
            const std::uint8_t* row = band.sourceRow(band.first - reach + i0 + r);
            for (int x = 0; x < length; ++x) {
                groupA[static_cast<std::size_t>(x * group + r)] =
                    row[PlaneBand::ClampIndex(x - reach, width)];
            }
        }
        float* in = groupA.data();
        float* out = groupB.data();
        int count = length;
        for (int pass = 0; pass < kBoxPasses; ++pass) {
            BoxPassDown({in, static_cast<std::size_t>(group)}, count, group, box, inner.data(),
                        {out, static_cast<std::size_t>(group)});
            count -= 2 * box.reach();
            std::swap(in, out);
        }
        for (int r = 0; r < group; ++r) {
            float* to = planeA.data() + static_cast<std::size_t>(i0 + r) * width;
            for (int x = 0; x < width; ++x) {
                to[x] = in[x * group + r];
            }
        }
    }
    // The passes down the columns go strip by strip, each strip's rows
    // staying in cache from one pass to the next.
    for (int x0 = 0; x0 < width; x0 += kStrip) {
        const int strip = std::min(kStrip, width - x0);
        Rows in{planeA.data() + x0, static_cast<std::size_t>(width)};
        Rows out{stripA.data(), static_cast<std::size_t>(strip)};
        int count = rows;
        for (int pass = 0; pass < kBoxPasses; ++pass) {
            BoxPassDown(in, count, strip, box, inner.data(), out);
            count -= 2 * box.reach();
            in = out;
            out.data = out.data == stripA.data() ? stripB.data() : stripA.data();
        }
        for (int y = band.first; y < band.end; ++y) {
            StoreRow(in.row(y - band.first), strip, band.targetRow(y) + x0);
        }
    }
}

}  // namespace

void GaussianBlur(const PlaneBand& band, double sigma) {
    if (band.first >= band.end) {
        return;
    }
    if (sigma < kBoxPassesFrom) {
        DirectGaussian(band, sigma);
    } else {
        BoxPassGaussian(band, sigma);
    }
}

}  // namespace wib
