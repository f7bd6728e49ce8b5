// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "paint/tool.h"

namespace wib {

// One tool as the menus and the tool box offer it: the command that chooses
// it, its caption (with the menu's accelerator) and its single-key shortcut.
struct ToolEntry {
    ToolId id;
    const char* command;
    const char* caption;
    const char* shortcut;
};

// Every tool, in the tool box's order.
std::span<const ToolEntry> ToolCatalog();

}  // namespace wib
