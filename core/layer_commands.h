// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The Layer menu: new, duplicate, delete, merges, order, selection of the
// current layer and its properties.
void RegisterLayerCommands(CommandRegistry& registry);

}  // namespace wib
