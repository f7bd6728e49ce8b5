// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Every filter and combine operation of the Filter menu.
void RegisterFilterCommands(CommandRegistry& registry);

}  // namespace wib
