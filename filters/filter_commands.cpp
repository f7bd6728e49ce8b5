// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_commands.h"

#include "filters/blur_filters.h"
#include "filters/combine_filters.h"
#include "filters/edge_filters.h"
#include "filters/rank_filters.h"
#include "filters/sharpen_filters.h"

namespace wib {

void RegisterFilterCommands(CommandRegistry& registry) {
    RegisterBlurFilters(registry);
    RegisterSharpenFilters(registry);
    RegisterEdgeFilters(registry);
    RegisterRankFilters(registry);
    RegisterCombineCommands(registry);
}

}  // namespace wib
