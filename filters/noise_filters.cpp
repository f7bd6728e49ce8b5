// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/noise_filters.h"

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_bands.h"
#include "pixel/noise.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Noise";

// One draw from the workspace's generator per run fixes every pixel's noise.
std::uint32_t DrawSeed(const FilterContext& context) {
    return static_cast<std::uint32_t>(context.workspace.random());
}

void AddNoise(const FilterContext& context) {
    const std::uint32_t seed = DrawSeed(context);
    const int amount = static_cast<int>(context.values.integer("amount"));
    const bool mono = context.values.integer("mono") == -1;
    ForEachRow(context, [&](int y) {
        AddNoiseRow(SourceRow(context, y), TargetRow(context, y), y, seed, amount, mono,
                    context.source.width);
    });
}

void FilmGrain(const FilterContext& context) {
    const std::uint32_t seed = DrawSeed(context);
    const int amount = static_cast<int>(context.values.integer("amount"));
    const int size = static_cast<int>(context.values.integer("size"));
    ForEachRow(context, [&](int y) {
        FilmGrainRow(SourceRow(context, y), TargetRow(context, y), y, seed, amount, size,
                     context.source.width);
    });
}

}  // namespace

void RegisterNoiseFilters(CommandRegistry& registry) {
    registry.add(FilterRow(
        "filter.noise.add", "&Add noise...", kMenu,
        {IntegerParam("amount", "Amount", 0, 255, 32), BooleanParam("mono", "Monochrome", false)},
        AddNoise));
    registry.add(FilterRow("filter.noise.film_grain", "&Film grain...", kMenu,
                           {IntegerParam("amount", "Amount", 0, 255, 40),
                            IntegerParam("size", "Grain size", 1, 16, 1)},
                           FilmGrain));
}

}  // namespace wib
