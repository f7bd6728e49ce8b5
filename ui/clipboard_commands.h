// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// edit.paste: the picture on the clipboard becomes the image, taking its size,
// by way of a packed bitmap read by cDIB.
void RegisterClipboardCommands(CommandRegistry& registry);

}  // namespace wib
