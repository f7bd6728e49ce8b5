// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace wib {

class CommandRegistry;

// The menus of the menu bar, left to right: the program's own menus that have
// commands, in their fixed order (File, Edit, Image, Brush, Animation, Filter,
// Plug-ins, View, Window), then any other menu a command names, in the order
// its first command was registered.
std::vector<std::string> MenuOrder(const CommandRegistry& commands);

}  // namespace wib
