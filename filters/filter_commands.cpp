// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_commands.h"

#include "filters/colour_filters.h"
#include "filters/combine_filters.h"
#include "filters/distort_filters.h"
#include "filters/noise_filters.h"

namespace wib {

void RegisterFilterCommands(CommandRegistry& registry) {
    RegisterCombineCommands(registry);
    RegisterColourFilters(registry);
    RegisterDistortFilters(registry);
    RegisterNoiseFilters(registry);
}

}  // namespace wib
