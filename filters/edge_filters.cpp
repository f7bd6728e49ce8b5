// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/edge_filters.h"

#include "filters/filter_preview.h"
#include "filters/window_filter.h"
#include "pixel/edge.h"

namespace wib {

void RegisterEdgeFilters(CommandRegistry& registry) {
    constexpr const char* kMenu = "Filter/Edge";
    registry.add(WindowFilterRow("filter.edge.sobel", "&Sobel", kMenu, {},
                                 [](const PlaneBand& band, const ParamValues&) {
                                     GradientFilter(band, {GradientMap::Kind::Magnitude});
                                 }));
    registry.add(
        WindowFilterRow("filter.edge.laplacian", "&Laplacian", kMenu, {},
                        [](const PlaneBand& band, const ParamValues&) { LaplacianFilter(band); }));
    registry.add(WindowFilterRow("filter.edge.find", "&Find edges", kMenu, {},
                                 [](const PlaneBand& band, const ParamValues&) {
                                     GradientFilter(band, {GradientMap::Kind::InvertedMagnitude});
                                 }));
    // The Sobel magnitude reaches 4 * 255 * sqrt(2) on a hard corner.
    registry.add(
        WithPreviewReach(WindowFilterRow("filter.edge.threshold", "&Threshold edges...", kMenu,
                                         {IntegerParam("level", "Level", 1, 1443, 128)},
                                         [](const PlaneBand& band, const ParamValues& values) {
                                             GradientMap map{GradientMap::Kind::Threshold};
                                             map.level = static_cast<int>(values.integer("level"));
                                             GradientFilter(band, map);
                                         }),
                         FixedReach(1)));
}

}  // namespace wib
