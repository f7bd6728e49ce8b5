// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_commands.h"

#include "filters/combine_filters.h"

namespace wib {

void RegisterFilterCommands(CommandRegistry& registry) {
    RegisterCombineCommands(registry);
}

}  // namespace wib
