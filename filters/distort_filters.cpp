// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/distort_filters.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_bands.h"
#include "filters/filter_preview.h"
#include "pixel/distort.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Distort";

// Every target pixel takes the source colour at the point `map` names.
template <typename Map>
void Remap(const FilterContext& context, const Map& map) {
    const RgbPlanes source = SourceImage(context);
    const RgbTarget target = TargetImage(context);
    ParallelRows(context.threads, source.height,
                 [&](int first, int end) { MapRows(source, target, first, end, map); });
}

// A filter that moves pixels by the map `makeMap` builds from the image and
// the panel's values.
template <typename MakeMap>
CommandSpec MapFilter(std::string id, std::string caption, std::vector<ParamSpec> params,
                      MakeMap makeMap) {
    return FilterRow(std::move(id), std::move(caption), kMenu, std::move(params),
                     [makeMap](const FilterContext& context) {
                         Remap(context, makeMap(context, SourceImage(context)));
                     });
}

double Number(const FilterContext& context, const char* name) {
    return context.values.number(name);
}

double Integer(const FilterContext& context, const char* name) {
    return static_cast<double>(context.values.integer(name));
}

void Pixelate(const FilterContext& context) {
    const RgbPlanes source = SourceImage(context);
    const RgbTarget target = TargetImage(context);
    const int size = static_cast<int>(context.values.integer("size"));
    const int blocks = (source.height + size - 1) / size;
    ParallelRows(context.threads, blocks,
                 [&](int first, int end) { PixelateRows(source, target, size, first, end); });
}

}  // namespace

void DisplaceBySwap(const FilterContext& context, double amount) {
    const Document& doc = context.workspace.document;
    Remap(context, DisplaceMap{doc.SwapR.data(), doc.SwapG.data(), doc.SwapR.stride(), amount});
}

void RegisterDistortFilters(CommandRegistry& registry) {
    registry.add(MapFilter(
        "filter.distort.twirl", "&Twirl...",
        {IntegerParam("angle", "Angle (degrees)", -720, 720, 90)},
        [](const FilterContext& context, const RgbPlanes& image) {
            return TwirlMap{CentreFrame(image), Integer(context, "angle") * std::numbers::pi / 180};
        }));
    registry.add(MapFilter(
        "filter.distort.spherize", "&Spherize/Pinch...",
        {IntegerParam("amount", "Amount", -100, 100, 50)},
        [](const FilterContext& context, const RgbPlanes& image) {
            return SpherizeMap{CentreFrame(image), std::exp2(Integer(context, "amount") / 100)};
        }));
    registry.add(MapFilter("filter.distort.ripple", "&Ripple...",
                           {NumberParam("amplitude", "Amplitude", 0, 100, 4),
                            NumberParam("wavelength", "Wavelength", 2, 1000, 16)},
                           [](const FilterContext& context, const RgbPlanes& image) {
                               return RippleMap{CentreFrame(image), Number(context, "amplitude"),
                                                Number(context, "wavelength")};
                           }));
    registry.add(
        MapFilter("filter.distort.wave", "&Wave...",
                  {NumberParam("amplitude", "Amplitude", 0, 100, 8),
                   NumberParam("wavelength", "Wavelength", 2, 1000, 48)},
                  [](const FilterContext& context, const RgbPlanes&) {
                      return WaveMap{Number(context, "amplitude"), Number(context, "wavelength")};
                  }));
    registry.add(MapFilter("filter.distort.polar", "&Polar coordinates...",
                           {ChoiceParam("direction", "Direction",
                                        {"Rectangular to polar", "Polar to rectangular"}, 0)},
                           [](const FilterContext& context, const RgbPlanes& image) {
                               return PolarMap{CentreFrame(image), image.width, image.height,
                                               context.values.integer("direction") == 1};
                           }));
    registry.add(FilterRow("filter.distort.pixelate", "Pi&xelate...", kMenu,
                           {IntegerParam("size", "Cell size", 2, 200, 8)}, Pixelate));
    // Reads the swap image, which the preview does not copy.
    registry.add(
        WithoutPreview(FilterRow("filter.distort.displace", "&Displace by swap image...", kMenu,
                                 {IntegerParam("amount", "Amount (pixels)", -100, 100, 10)},
                                 [](const FilterContext& context) {
                                     DisplaceBySwap(context, Integer(context, "amount"));
                                 })));
}

}  // namespace wib
