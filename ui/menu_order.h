// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace wib {

class CommandRegistry;

// The menus of the menu bar, left to right: the program's own menus that have
// commands, in their fixed order (File, Edit, Image, Layer, Select, Tools, Brush, Animation,
// Filter, Plug-ins, View, Window), then any other menu a command names, in the
// order its first command was registered. A command's menu may be a path
// ("Filter/Blur"): its first part is the menu on the bar.
std::vector<std::string> MenuOrder(const CommandRegistry& commands);

// The parts of a menu path: "Filter/Blur" gives "Filter" and "Blur".
std::vector<std::string> MenuPath(const std::string& menu);

}  // namespace wib
