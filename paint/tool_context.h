// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>

#include "core/param_value.h"
#include "paint/tool.h"

namespace wib {

class Workspace;

// Runs a command from the command table by id, with the values given and the
// command's starting values for the rest; true when it ran. The tools apply
// their effect through it, so that a click does exactly what the command does.
using ToolCommandRunner =
    std::function<bool(const std::string& id, const std::map<std::string, ParamValue>& values)>;

// A pointer position in image pixels (the canvas sends window units).
std::array<double, 2> ImagePoint(const Workspace& workspace, const ToolInput& input);

// The nearest pixel edge to a pointer position, in image pixels.
std::array<long long, 2> PixelCorner(const Workspace& workspace, const ToolInput& input);

// The pixel under a pointer position.
std::array<long long, 2> PixelUnder(const Workspace& workspace, const ToolInput& input);

// How a selection tool's new selection meets the current one: Shift adds,
// Alt subtracts, both intersect; without either, the options' mode.
int SelectionModeFor(const ToolModifiers& modifiers, int fallback);

}  // namespace wib
