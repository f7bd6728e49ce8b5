// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The commands of the document itself: file.new, image.canvas_size,
// edit.undo, edit.redo.
void RegisterDocumentCommands(CommandRegistry& registry);

}  // namespace wib
