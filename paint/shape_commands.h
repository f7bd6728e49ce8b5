// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class PaintSession;

// draw.line, draw.rectangle and draw.ellipse: the shape tools' effects as
// commands, coordinates in image pixels.
void RegisterShapeCommands(CommandRegistry& registry, PaintSession& session);

}  // namespace wib
