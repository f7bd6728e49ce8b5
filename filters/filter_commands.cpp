// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_commands.h"

#include "filters/blur_filters.h"
#include "filters/colour_filters.h"
#include "filters/combine_filters.h"
#include "filters/distort_filters.h"
#include "filters/edge_filters.h"
#include "filters/filter_history.h"
#include "filters/noise_filters.h"
#include "filters/rank_filters.h"
#include "filters/sharpen_filters.h"
#include "filters/swap_map_combines.h"

namespace wib {

void RegisterFilterCommands(CommandRegistry& registry) {
    // In the order of the Filter menu.
    RegisterBlurFilters(registry);
    RegisterSharpenFilters(registry);
    RegisterEdgeFilters(registry);
    RegisterRankFilters(registry);
    RegisterColourFilters(registry);
    RegisterDistortFilters(registry);
    RegisterNoiseFilters(registry);
    RegisterCombineCommands(registry);
    RegisterSwapMapCombines(registry);
    // Last: it teaches every filter registered above to note itself.
    RegisterFilterRepeat(registry);
}

}  // namespace wib
