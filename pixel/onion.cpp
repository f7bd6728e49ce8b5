// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/onion.h"

#include <algorithm>

#include "pixel/plane_band.h"

namespace wib {

namespace {

// x / 255 rounded, exact for 0 <= x <= 65025 + 127; no division, so that
// the loops below vectorise.
inline std::uint32_t Div255Round(std::uint32_t x) {
    x += 128;
    return (x + (x >> 8)) >> 8;
}

// The cover of one layer over an opaque row: opacity where the layer differs
// from the current picture, scaled by the layer's own coverage.
WIB_WINDOW_KERNEL
void LayerWeights(const OnionLayer& layer, const std::uint8_t* const current[3], std::size_t offset,
                  int count, std::uint8_t* weight) {
    const std::uint8_t* r = layer.planes.r + offset;
    const std::uint8_t* g = layer.planes.g + offset;
    const std::uint8_t* b = layer.planes.b + offset;
    const std::uint8_t* cr = current[0];
    const std::uint8_t* cg = current[1];
    const std::uint8_t* cb = current[2];
    const std::uint32_t opacity = layer.opacity;
    if (layer.planes.a == nullptr) {
        for (int x = 0; x < count; ++x) {
            const bool differs = (r[x] != cr[x]) | (g[x] != cg[x]) | (b[x] != cb[x]);
            weight[x] = static_cast<std::uint8_t>(differs ? opacity : 0u);
        }
        return;
    }
    const std::uint8_t* a = layer.planes.a + offset;
    for (int x = 0; x < count; ++x) {
        const bool differs = (r[x] != cr[x]) | (g[x] != cg[x]) | (b[x] != cb[x]) | (a[x] != 255);
        weight[x] = static_cast<std::uint8_t>(differs ? Div255Round(a[x] * opacity) : 0u);
    }
}

// out = out + (colour - out) x weight, rounded, over an opaque row.
WIB_WINDOW_KERNEL
void BlendChannel(const std::uint8_t* source, std::uint8_t tint, bool tinted,
                  const std::uint8_t* weight, int count, std::uint8_t* out) {
    const std::uint32_t mix = tinted ? 1u : 0u;
    const std::uint32_t add = tinted ? tint + 1u : 0u;
    for (int x = 0; x < count; ++x) {
        const std::uint32_t colour = (source[x] + add) >> mix;
        const std::uint32_t w = weight[x];
        out[x] = static_cast<std::uint8_t>(Div255Round(colour * w + out[x] * (255u - w)));
    }
}

std::uint8_t TintedChannel(const OnionLayer& layer, int channel, std::uint8_t value) {
    return layer.tinted ? static_cast<std::uint8_t>((value + layer.tint[channel] + 1) >> 1) : value;
}

// The straight-colour "over" for a current picture with coverage, pixel by
// pixel; the canvas shows layered pictures this way.
void BlendCoveredRow(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                     const OnionTarget& out, std::size_t offset, int count) {
    for (int x = 0; x < count; ++x) {
        const std::size_t i = offset + static_cast<std::size_t>(x);
        const std::uint8_t here[4] = {current.r[i], current.g[i], current.b[i], current.a[i]};
        std::uint32_t colour[3] = {here[0], here[1], here[2]};
        std::uint32_t cover = here[3];
        for (const OnionLayer& layer : layers) {
            const OnionPlanes& p = layer.planes;
            const std::uint8_t there[4] = {p.r[i], p.g[i], p.b[i],
                                           p.a ? p.a[i] : std::uint8_t{255}};
            if (std::equal(here, here + 4, there)) {
                continue;
            }
            const std::uint32_t w = Div255Round(there[3] * std::uint32_t{layer.opacity});
            // Both in units of 1/65025: the layer's part and what shows of the picture below.
            const std::uint32_t mine = w * 255;
            const std::uint32_t below = cover * (255 - w);
            const std::uint32_t total = mine + below;
            if (total == 0) {
                continue;
            }
            for (int c = 0; c < 3; ++c) {
                colour[c] =
                    (TintedChannel(layer, c, there[c]) * mine + colour[c] * below + total / 2) /
                    total;
            }
            cover = (total + 127) / 255;
        }
        out.r[i] = static_cast<std::uint8_t>(colour[0]);
        out.g[i] = static_cast<std::uint8_t>(colour[1]);
        out.b[i] = static_cast<std::uint8_t>(colour[2]);
        out.a[i] = static_cast<std::uint8_t>(cover);
    }
}

}  // namespace

void BlendOnion(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                const OnionTarget& out, int left, int top, int right, int bottom) {
    if (right < left || bottom < top) {
        return;
    }
    const int count = right - left + 1;
    std::vector<std::uint8_t> weight(static_cast<std::size_t>(count));
    for (int y = top; y <= bottom; ++y) {
        const std::size_t offset =
            static_cast<std::size_t>(y) * current.stride + static_cast<std::size_t>(left);
        if (current.a != nullptr) {
            BlendCoveredRow(current, layers, out, offset, count);
            continue;
        }
        const std::uint8_t* here[3] = {current.r + offset, current.g + offset, current.b + offset};
        std::uint8_t* target[3] = {out.r + offset, out.g + offset, out.b + offset};
        for (int c = 0; c < 3; ++c) {
            std::copy_n(here[c], count, target[c]);
        }
        for (const OnionLayer& layer : layers) {
            LayerWeights(layer, here, offset, count, weight.data());
            const std::uint8_t* source[3] = {layer.planes.r + offset, layer.planes.g + offset,
                                             layer.planes.b + offset};
            for (int c = 0; c < 3; ++c) {
                BlendChannel(source[c], layer.tint[c], layer.tinted, weight.data(), count,
                             target[c]);
            }
        }
    }
}

}  // namespace wib
