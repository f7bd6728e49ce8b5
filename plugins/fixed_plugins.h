// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "plugins/plugin_launcher.h"

namespace wib {

// A plug-in that a menu command of the program starts by its file name,
// wherever the plug-in folders hold it.
struct FixedPlugin {
    const char* id;       // the command: plugins.start.<id>
    const char* caption;  // its menu text
    const char* menu;
    const char* file;  // the exact file name looked for
    WindowStyle style;
};

// One-shot tools take the focus; the widgets that run beside the program
// leave it with the program.
std::span<const FixedPlugin> FixedPlugins();

}  // namespace wib
