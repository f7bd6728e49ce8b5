// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/onion.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "pixel/plane_band.h"

namespace wib {

namespace {

// Pixels laid over at a time: the running colour of so many stays in the
// first-level cache while every layer passes over it.
constexpr int kChunk = 512;

// The coverage an opaque layer reads.
constexpr std::array<std::uint8_t, kChunk> kOpaqueCover = [] {
    std::array<std::uint8_t, kChunk> cover{};
    cover.fill(255);
    return cover;
}();

// x / 255 rounded, exact for 0 <= x <= 65025; no division, and every step
// fits 16 bits, so that the loops below vectorise sixteen pixels at a time.
inline std::uint16_t Div255Round(std::uint16_t x) {
    const auto t = static_cast<std::uint16_t>(x + 128);
    return static_cast<std::uint16_t>((t + (t >> 8)) >> 8);
}

// Over an opaque picture a frame only darkens: its dark drawing shows on the
// light paper, while its paper leaves the current drawing as it is.
inline std::uint8_t Mix(std::uint8_t below, std::uint16_t shown, std::uint16_t w) {
    const std::uint16_t colour = std::min<std::uint16_t>(shown, below);
    return static_cast<std::uint8_t>(Div255Round(
        static_cast<std::uint16_t>(colour * w + below * static_cast<std::uint16_t>(255 - w))));
}

// How one layer's colour is shown: tinted halfway, or as it is.
struct ShownColour {
    std::uint16_t opacity;
    std::uint16_t shift;
    std::uint16_t add[3];
};

ShownColour ShownOf(const OnionLayer& layer) {
    ShownColour shown{layer.opacity, 0, {0, 0, 0}};
    if (layer.tinted) {
        shown.shift = 1;
        for (int c = 0; c < 3; ++c) {
            shown.add[c] = static_cast<std::uint16_t>(layer.tint[c] + 1);
        }
    }
    return shown;
}

// One layer over an opaque run of pixels, in place: where the layer differs
// from the current picture, out = out + (colour - out) x cover, rounded, the
// cover being the layer's opacity scaled by its own coverage. The runs never
// overlap, which the compiler must be told to vectorise the loop.
WIB_WINDOW_KERNEL
void BlendOpaqueRun(const std::uint8_t* __restrict r, const std::uint8_t* __restrict g,
                    const std::uint8_t* __restrict b, const std::uint8_t* __restrict a,
                    const std::uint8_t* __restrict cr, const std::uint8_t* __restrict cg,
                    const std::uint8_t* __restrict cb, std::uint8_t* __restrict outR,
                    std::uint8_t* __restrict outG, std::uint8_t* __restrict outB, int count,
                    ShownColour shown) {
    for (int x = 0; x < count; ++x) {
        const bool differs = (r[x] != cr[x]) | (g[x] != cg[x]) | (b[x] != cb[x]) | (a[x] != 255);
        const std::uint16_t w =
            differs ? Div255Round(static_cast<std::uint16_t>(a[x] * shown.opacity)) : 0;
        outR[x] = Mix(outR[x], static_cast<std::uint16_t>((r[x] + shown.add[0]) >> shown.shift), w);
        outG[x] = Mix(outG[x], static_cast<std::uint16_t>((g[x] + shown.add[1]) >> shown.shift), w);
        outB[x] = Mix(outB[x], static_cast<std::uint16_t>((b[x] + shown.add[2]) >> shown.shift), w);
    }
}

// Opaque words from three channels.
WIB_WINDOW_KERNEL
void PackRun(const std::uint8_t* __restrict r, const std::uint8_t* __restrict g,
             const std::uint8_t* __restrict b, int count, std::uint32_t* __restrict out) {
    for (int x = 0; x < count; ++x) {
        out[x] = 0xff000000u | (std::uint32_t{r[x]} << 16) | (std::uint32_t{g[x]} << 8) | b[x];
    }
}

// A layer's colour as shown over `below`: tinted, and only darkening where
// what lies below is opaque.
std::uint32_t Shown(const OnionLayer& layer, int channel, std::uint8_t value, std::uint32_t below,
                    std::uint32_t cover) {
    const std::uint32_t tinted =
        layer.tinted ? (value + layer.tint[channel] + 1u) >> 1 : std::uint32_t{value};
    return cover == 255 ? std::min(tinted, below) : tinted;
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
            const std::uint32_t w =
                Div255Round(static_cast<std::uint16_t>(there[3] * layer.opacity));
            // Both in units of 1/65025: the layer's part and what shows of the picture below.
            const std::uint32_t mine = w * 255;
            const std::uint32_t below = cover * (255 - w);
            const std::uint32_t total = mine + below;
            if (total == 0) {
                continue;
            }
            for (int c = 0; c < 3; ++c) {
                colour[c] = (Shown(layer, c, there[c], colour[c], cover) * mine +
                             colour[c] * below + total / 2) /
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

void BlendOnionOpaque(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                      const OnionWords& out, int left, int top, int right, int bottom) {
    std::vector<ShownColour> shown;
    shown.reserve(layers.size());
    std::transform(layers.begin(), layers.end(), std::back_inserter(shown), ShownOf);
    alignas(64) std::uint8_t colour[3][kChunk];
    for (int y = top; y <= bottom; ++y) {
        const std::size_t row = static_cast<std::size_t>(y) * current.stride;
        std::uint32_t* words = out.pixels + static_cast<std::size_t>(y) * out.stride;
        for (int x = left; x <= right; x += kChunk) {
            const int count = std::min(kChunk, right - x + 1);
            const std::size_t at = row + static_cast<std::size_t>(x);
            const std::uint8_t* here[3] = {current.r + at, current.g + at, current.b + at};
            for (int c = 0; c < 3; ++c) {
                std::copy_n(here[c], count, colour[c]);
            }
            for (std::size_t i = 0; i < layers.size(); ++i) {
                const OnionPlanes& p = layers[i].planes;
                BlendOpaqueRun(p.r + at, p.g + at, p.b + at, p.a ? p.a + at : kOpaqueCover.data(),
                               here[0], here[1], here[2], colour[0], colour[1], colour[2], count,
                               shown[i]);
            }
            PackRun(colour[0], colour[1], colour[2], count, words + x);
        }
    }
}

void BlendOnionCovered(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                       const OnionTarget& out, int left, int top, int right, int bottom) {
    for (int y = top; y <= bottom && left <= right; ++y) {
        BlendCoveredRow(
            current, layers, out,
            static_cast<std::size_t>(y) * current.stride + static_cast<std::size_t>(left),
            right - left + 1);
    }
}

}  // namespace wib
