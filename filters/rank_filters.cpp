// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/rank_filters.h"

#include "filters/filter_preview.h"
#include "filters/window_filter.h"
#include "pixel/rank.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Rank";

CommandSpec RadiusRow(const char* id, const char* caption, void (*kernel)(const PlaneBand&, int)) {
    return WithPreviewReach(
        WindowFilterRow(id, caption, kMenu, {IntegerParam("radius", "Radius", 1, 50, 1)},
                        [kernel](const PlaneBand& band, const ParamValues& values) {
                            kernel(band, static_cast<int>(values.integer("radius")));
                        }),
        IntegerReach("radius"));
}

}  // namespace

void RegisterRankFilters(CommandRegistry& registry) {
    registry.add(RadiusRow("filter.rank.median", "&Median...", MedianFilter));
    registry.add(RadiusRow("filter.rank.minimum", "M&inimum (erode)...", MinimumFilter));
    registry.add(RadiusRow("filter.rank.maximum", "M&aximum (dilate)...", MaximumFilter));
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.rank.despeckle", "&Despeckle...", kMenu,
                        {IntegerParam("threshold", "Threshold", 0, 255, 30)},
                        [](const PlaneBand& band, const ParamValues& values) {
                            Despeckle(band, static_cast<int>(values.integer("threshold")));
                        }),
        FixedReach(1)));
}

}  // namespace wib
