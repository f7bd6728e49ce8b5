// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Flood fill, fill selection and gradient (edit.fill, edit.fill_selection,
// draw.gradient), each an undo step.
void RegisterFillCommands(CommandRegistry& registry);

}  // namespace wib
