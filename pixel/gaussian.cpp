// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/gaussian.h"

#include <cmath>
#include <vector>

namespace wib {

namespace {

// From this sigma on the box passes are both faster and accurate enough.
constexpr double kBoxPassesFrom = 3.0;
constexpr int kBoxPasses = 4;

WIB_WINDOW_KERNEL void AccumulateRow(float* sum, const std::uint8_t* row, int width, float weight) {
    for (int x = 0; x < width; ++x) {
        sum[x] += weight * static_cast<float>(row[x]);
    }
}

// Tap by tap along the whole row, so that each step is one vector loop.
WIB_WINDOW_KERNEL void ConvolveRow(const float* extended, const float* weights, int radius,
                                   int width, float* sum, std::uint8_t* out) {
    std::fill(sum, sum + width, 0.0f);
    for (int k = 0; k <= 2 * radius; ++k) {
        const float w = weights[k];
        const float* in = extended + k;
        for (int x = 0; x < width; ++x) {
            sum[x] += w * in[x];
        }
    }
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<std::uint8_t>(std::clamp(sum[x], 0.0f, 255.0f) + 0.5f);
    }
}

void DirectGaussian(const PlaneBand& band, double sigma) {
    const int radius = std::max(1, static_cast<int>(std::ceil(4 * sigma)));
    std::vector<float> weights(static_cast<std::size_t>(2 * radius + 1));
    double total = 0;
    for (int k = -radius; k <= radius; ++k) {
        total += std::exp(-k * k / (2 * sigma * sigma));
    }
    for (int k = -radius; k <= radius; ++k) {
        weights[static_cast<std::size_t>(k + radius)] =
            static_cast<float>(std::exp(-k * k / (2 * sigma * sigma)) / total);
    }
    std::vector<float> column(static_cast<std::size_t>(band.width));
    std::vector<float> extended(static_cast<std::size_t>(band.width + 2 * radius));
    for (int y = band.first; y < band.end; ++y) {
        std::fill(column.begin(), column.end(), 0.0f);
        for (int k = -radius; k <= radius; ++k) {
            AccumulateRow(column.data(), band.sourceRow(y + k), band.width,
                          weights[static_cast<std::size_t>(k + radius)]);
        }
        ExtendRow(column.data(), band.width, radius, extended.data());
        ConvolveRow(extended.data(), weights.data(), radius, band.width, column.data(),
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

// One pass along an array: out[i] is the box centred on in[i + reach], for
// every i with the whole box inside `count` values.
WIB_WINDOW_KERNEL void BoxPassAlong(const float* in, int count, const ExtendedBox& box,
                                    float* out) {
    const int span = 2 * box.reach();
    float inner = 0;
    for (int j = 1; j < span; ++j) {
        inner += in[j];
    }
    for (int i = 0; i + span < count; ++i) {
        out[i] = box.scale * (inner + box.alpha * (in[i] + in[i + span]));
        inner += in[i + span] - in[i + 1];
    }
}

// The same pass down the columns of `rows` rows of `width` floats.
WIB_WINDOW_KERNEL void BoxPassDown(const float* in, int rows, int width, const ExtendedBox& box,
                                   float* inner, float* out) {
    const int span = 2 * box.reach();
    const auto offset = [width](int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    };
    std::fill(inner, inner + width, 0.0f);
    for (int j = 1; j < span; ++j) {
        const float* r = in + offset(j);
        for (int x = 0; x < width; ++x) {
            inner[x] += r[x];
        }
    }
    for (int i = 0; i + span < rows; ++i) {
        const float* top = in + offset(i);
        const float* next = in + offset(i + 1);
        const float* bottom = in + offset(i + span);
        float* o = out + offset(i);
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
    std::vector<float> line(static_cast<std::size_t>(width + 2 * reach));
    std::vector<float> spare(line.size());
    std::vector<float> planeA(static_cast<std::size_t>(rows) * static_cast<std::size_t>(width));
    std::vector<float> planeB(planeA.size());
    std::vector<float> inner(static_cast<std::size_t>(width));
    for (int i = 0; i < rows; ++i) {
        ExtendRow(band.sourceRow(band.first - reach + i), width, reach, line.data());
        int count = width + 2 * reach;
        float* in = line.data();
        float* out = spare.data();
        for (int pass = 0; pass < kBoxPasses; ++pass) {
            BoxPassAlong(in, count, box, out);
            count -= 2 * box.reach();
            std::swap(in, out);
        }
        std::copy(in, in + width, planeA.data() + static_cast<std::size_t>(i) * width);
    }
    float* in = planeA.data();
    float* out = planeB.data();
    int count = rows;
    for (int pass = 0; pass < kBoxPasses; ++pass) {
        BoxPassDown(in, count, width, box, inner.data(), out);
        count -= 2 * box.reach();
        std::swap(in, out);
    }
    for (int y = band.first; y < band.end; ++y) {
        StoreRow(in + static_cast<std::size_t>(y - band.first) * width, width, band.targetRow(y));
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
