// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The Select menu (select.*): whole-selection commands, the selection tools'
// shapes and magic wand, and the selection from the layer's alpha and to and
// from the swap image; each that changes the selection is an undo step.
void RegisterSelectionCommands(CommandRegistry& registry);

}  // namespace wib
