// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class PaintSession;

// The Brush menu: the built-in brushes, the image brush, and the papers.
void RegisterPaintCommands(CommandRegistry& registry, PaintSession& session);

}  // namespace wib
