// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_commands.h"

#include "filters/combine_filters.h"
#include "filters/filter_history.h"
#include "filters/swap_map_combines.h"

namespace wib {

void RegisterFilterCommands(CommandRegistry& registry) {
    RegisterCombineCommands(registry);
    RegisterSwapMapCombines(registry);
    RegisterFilterRepeat(registry);
}

}  // namespace wib
