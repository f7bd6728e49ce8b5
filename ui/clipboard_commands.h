// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The Edit menu's clipboard: cut, copy, copy merged (the visible layers'
// composite), paste (where the block was copied from, or the top left corner
// for a picture from another program), paste into selection, and paste as new image (the
// clipboard's picture becomes the image, taking its size, by way of a packed bitmap read by cDIB).
void RegisterClipboardCommands(CommandRegistry& registry);

}  // namespace wib
