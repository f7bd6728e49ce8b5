// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "core/commands.h"
#include "filters/filter_row.h"
#include "pixel/plane_band.h"

namespace wib {

// Runs `kernel` on each colour plane from source to target, the rows split
// into `context.threads` bands.
void ForEachPlaneBand(const FilterContext& context,
                      const std::function<void(const PlaneBand& band)>& kernel);

// A filter row whose kernel reads its values and works plane by plane.
CommandSpec WindowFilterRow(
    std::string id, std::string caption, std::string menu, std::vector<ParamSpec> params,
    std::function<void(const PlaneBand& band, const ParamValues& values)> kernel);

}  // namespace wib
