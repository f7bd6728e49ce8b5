// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Sharpen: sharpen, unsharp mask, emboss and the custom kernel.
void RegisterSharpenFilters(CommandRegistry& registry);

}  // namespace wib
