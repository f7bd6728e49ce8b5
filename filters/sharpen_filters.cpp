// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/sharpen_filters.h"

#include <vector>

#include "core/commands.h"
#include "filters/filter_preview.h"
#include "filters/window_filter.h"
#include "pixel/convolve.h"
#include "pixel/edge.h"
#include "pixel/gaussian.h"
#include "pixel/sharpen.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Sharpen";
// Kernel values of this size keep a 5 x 5 sum of bytes inside 32 bits.
constexpr double kMaxWeight = 65536;

ParamSpec KernelParam() {
    ParamSpec spec;
    spec.name = "kernel";
    spec.caption = "Kernel (row by row)";
    spec.type = ParamType::IntegerList;
    spec.minimum = -kMaxWeight;
    spec.maximum = kMaxWeight;
    spec.lengths = {9, 25};
    spec.fallback = IntegerList{0, 0, 0, 0, 1, 0, 0, 0, 0};
    return spec;
}

ParamSpec DivisorParam() {
    ParamSpec spec = IntegerParam("divisor", "Divisor", -kMaxWeight, kMaxWeight, 1);
    spec.nonZero = true;
    return spec;
}

void ConvolveBand(const PlaneBand& band, const ParamValues& values) {
    const IntegerList& kernel = values.integers("kernel");
    const std::vector<int> weights(kernel.begin(), kernel.end());
    Convolve(band, weights.data(), weights.size() == 9 ? 3 : 5,
             static_cast<int>(values.integer("divisor")),
             static_cast<int>(values.integer("offset")));
}

void UnsharpBand(const PlaneBand& band, const ParamValues& values) {
    GaussianBlur(band, values.number("radius"));
    for (int y = band.first; y < band.end; ++y) {
        UnsharpRow(band.sourceRow(y), band.targetRow(y), band.width, values.number("amount"),
                   static_cast<int>(values.integer("threshold")), band.targetRow(y));
    }
}

}  // namespace

void RegisterSharpenFilters(CommandRegistry& registry) {
    registry.add(WindowFilterRow("filter.sharpen.sharpen", "&Sharpen", kMenu, {},
                                 [](const PlaneBand& band, const ParamValues&) {
                                     const int kernel[9] = {0, -1, 0, -1, 5, -1, 0, -1, 0};
                                     Convolve(band, kernel, 3, 1, 0);
                                 }));
    registry.add(
        WithPreviewReach(WindowFilterRow("filter.sharpen.unsharp", "&Unsharp mask...", kMenu,
                                         {NumberParam("radius", "Radius (sigma)", 0.3, 200, 2),
                                          NumberParam("amount", "Amount", 0, 10, 1),
                                          IntegerParam("threshold", "Threshold", 0, 255, 0)},
                                         UnsharpBand),
                         NumberReach("radius", 5, 2)));
    registry.add(
        WithPreviewReach(WindowFilterRow("filter.sharpen.emboss", "&Emboss...", kMenu,
                                         {NumberParam("angle", "Angle (degrees)", -360, 360, 135),
                                          NumberParam("depth", "Depth", 0.1, 20, 2)},
                                         [](const PlaneBand& band, const ParamValues& values) {
                                             GradientMap map{GradientMap::Kind::Emboss};
                                             map.angleDegrees = values.number("angle");
                                             map.depth = values.number("depth");
                                             GradientFilter(band, map);
                                         }),
                         FixedReach(1)));
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.convolve", "&Custom kernel...", kMenu,
                        {KernelParam(), DivisorParam(),
                         IntegerParam("offset", "Offset", -kMaxWeight, kMaxWeight, 0)},
                        ConvolveBand),
        FixedReach(2)));
}

}  // namespace wib
