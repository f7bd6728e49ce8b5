// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Noise: random grain, seeded from the workspace's generator so a
// seeded run repeats exactly.
void RegisterNoiseFilters(CommandRegistry& registry);

}  // namespace wib
