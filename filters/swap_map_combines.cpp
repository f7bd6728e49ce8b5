// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/swap_map_combines.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <utility>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/combine_filters.h"
#include "filters/distort_filters.h"
#include "filters/filter_bands.h"
#include "pixel/colour_adjust.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Combine";

// The grey of a pixel of three planes.
int Brightness(const Plane& r, const Plane& g, const Plane& b, int x, int y) {
    return GreyOf(r.at(x, y), g.at(x, y), b.at(x, y));
}

struct Swap {
    const Plane& r;
    const Plane& g;
    const Plane& b;
    int width, height;
    int brightness(int x, int y) const {
        return Brightness(r, g, b, std::clamp(x, 0, width - 1), std::clamp(y, 0, height - 1));
    }
};

Swap SwapOf(const FilterContext& context) {
    const Document& doc = context.workspace.document;
    return {doc.SwapR, doc.SwapG, doc.SwapB, context.source.width, context.source.height};
}

// Every target pixel is the source pixel at the position `from` gives,
// clamped to the image (nearest pixel).
template <typename From>
void RemapNearest(const FilterContext& context, From from) {
    const int w = context.source.width, h = context.source.height;
    ForEachRow(context, [&](int y) {
        for (int x = 0; x < w; ++x) {
            const auto [fx, fy] = from(x, y);
            const int sx = std::clamp(static_cast<int>(std::lround(fx)), 0, w - 1);
            const int sy = std::clamp(static_cast<int>(std::lround(fy)), 0, h - 1);
            for (int c = 0; c < 3; ++c) {
                context.target[c].row(y)[x] = context.source[c].row(sy)[sx];
            }
        }
    });
}

CommandSpec Row(std::string id, std::string caption, FilterKernel kernel) {
    return FilterRow(std::move(id), std::move(caption), kMenu, {}, std::move(kernel),
                     kRepeatCombineQuestion);
}

}  // namespace

void RegisterSwapMapCombines(CommandRegistry& registry) {
    // The main image's colours with the swap image's brightness.
    registry.add(Row("combine.luminosity", "Luminosity", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        const ColourPlanes& in = context.source;
        ForEachRow(context, [&](int y) {
            for (int x = 0; x < in.width; ++x) {
                const int shift = swap.brightness(x, y) - Brightness(in[0], in[1], in[2], x, y);
                for (int c = 0; c < 3; ++c) {
                    context.target[c].row(y)[x] =
                        static_cast<std::uint8_t>(std::clamp(in[c].row(y)[x] + shift, 0, 255));
                }
            }
        });
    }));
    // Black in the main image is cloaked: the swap image shows there.
    registry.add(Row("combine.cloak", "Cloak", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        const ColourPlanes& in = context.source;
        const Plane* swapPlanes[3] = {&swap.r, &swap.g, &swap.b};
        ForEachRow(context, [&](int y) {
            for (int x = 0; x < in.width; ++x) {
                const bool black =
                    in[0].row(y)[x] == 0 && in[1].row(y)[x] == 0 && in[2].row(y)[x] == 0;
                for (int c = 0; c < 3; ++c) {
                    context.target[c].row(y)[x] =
                        black ? swapPlanes[c]->row(y)[x] : in[c].row(y)[x];
                }
            }
        });
    }));
    // The swap's red and green, around 128, push each pixel: 8 levels a pixel,
    // as Filter > Distort > Displace at 16 pixels.
    registry.add(Row("combine.displace", "Displace",
                     [](const FilterContext& context) { DisplaceBySwap(context, 16); }));
    // The swap's brightness as a relief, lit from the top left, on the main image.
    registry.add(Row("combine.emboss", "Emboss", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        const ColourPlanes& in = context.source;
        ForEachRow(context, [&](int y) {
            for (int x = 0; x < in.width; ++x) {
                const int relief = swap.brightness(x - 1, y - 1) - swap.brightness(x + 1, y + 1);
                for (int c = 0; c < 3; ++c) {
                    context.target[c].row(y)[x] =
                        static_cast<std::uint8_t>(std::clamp(in[c].row(y)[x] + relief, 0, 255));
                }
            }
        });
    }));
    // The main image seen through water whose surface is the swap's brightness:
    // each pixel is moved by the slope there, an eighth of a pixel a level.
    registry.add(Row("combine.pool", "Pool", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        RemapNearest(context, [&swap](int x, int y) {
            return std::pair{x + (swap.brightness(x + 1, y) - swap.brightness(x - 1, y)) / 8.0,
                             y + (swap.brightness(x, y + 1) - swap.brightness(x, y - 1)) / 8.0};
        });
    }));
    // Each pixel taken from a random neighbour up to brightness / 32 pixels
    // away, from the program's seeded generator (one thread, in order).
    registry.add(Row("combine.jitter", "Jitter", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        std::mt19937& random = context.workspace.random;
        FilterContext inOrder = context;
        inOrder.threads = 1;
        RemapNearest(inOrder, [&swap, &random](int x, int y) {
            const int reach = swap.brightness(x, y) / 32;
            std::uniform_int_distribution<int> step(-reach, reach);
            const int dx = step(random);
            const int dy = step(random);
            return std::pair{static_cast<double>(x + dx), static_cast<double>(y + dy)};
        });
    }));
    // Each pixel turned about the centre by the swap's brightness: 128 stays,
    // 0 and 255 turn about a quarter turn either way.
    registry.add(Row("combine.twirl", "Twirl", [](const FilterContext& context) {
        const Swap swap = SwapOf(context);
        const double cx = (context.source.width - 1) / 2.0;
        const double cy = (context.source.height - 1) / 2.0;
        RemapNearest(context, [&](int x, int y) {
            const double angle = (swap.brightness(x, y) - 128) / 128.0 * std::numbers::pi / 2;
            const double dx = x - cx, dy = y - cy;
            return std::pair{cx + dx * std::cos(angle) - dy * std::sin(angle),
                             cy + dx * std::sin(angle) + dy * std::cos(angle)};
        });
    }));
}

}  // namespace wib
