// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/packed_colour.h"
#include "core/plane.h"

namespace wib {

class CommandRegistry;
class Workspace;

struct TextStyle {
    std::string font = "Sans";
    int size = 24;  // pixels
    bool antialias = true;
};

// The text as a matte the size of its box (the font's line height per line,
// the widest line's advance): 255 inside the glyphs, partial on their edges
// when anti-aliased. Lines break at '\n'. Empty for empty text.
Plane RenderTextMatte(const std::string& text, const TextStyle& style);

// The text laid in `colour` with its box's top-left corner at (x, y), through
// the selection. Run it inside the edit bracket; false when nothing was laid.
bool DrawText(Workspace& workspace, int x, int y, const std::string& text, const TextStyle& style,
              PackedColour colour);

// draw.text, whose colour starts as the primary colour.
void RegisterTextCommands(CommandRegistry& registry);

}  // namespace wib
