// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Colour: per-pixel changes of value, tone and colour.
void RegisterColourFilters(CommandRegistry& registry);

}  // namespace wib
