// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The Select menu (select.*): whole-selection commands and the selection
// tools' shapes and magic wand, each an undo step.
void RegisterSelectionCommands(CommandRegistry& registry);

}  // namespace wib
