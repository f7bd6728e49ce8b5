// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// The combines that read the swap image as a map over the main image:
// luminosity, cloak, displace, emboss, pool, jitter and twirl.
void RegisterSwapMapCombines(CommandRegistry& registry);

}  // namespace wib
