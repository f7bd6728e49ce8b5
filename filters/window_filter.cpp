// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/window_filter.h"

#include <utility>

#include "filters/parallel_rows.h"

namespace wib {

void ForEachPlaneBand(const FilterContext& context,
                      const std::function<void(const PlaneBand& band)>& kernel) {
    const ColourPlanes& source = context.source;
    ParallelRows(context.threads, source.height, [&](int first, int end) {
        for (int c = 0; c < 3; ++c) {
            kernel(PlaneBand{source[c].data(), context.target[c].data(), source[c].stride(),
                             source.width, source.height, first, end});
        }
    });
}

CommandSpec WindowFilterRow(
    std::string id, std::string caption, std::string menu, std::vector<ParamSpec> params,
    std::function<void(const PlaneBand& band, const ParamValues& values)> kernel) {
    return FilterRow(std::move(id), std::move(caption), std::move(menu), std::move(params),
                     [kernel = std::move(kernel)](const FilterContext& context) {
                         ForEachPlaneBand(
                             context, [&](const PlaneBand& band) { kernel(band, context.values); });
                     });
}

}  // namespace wib
