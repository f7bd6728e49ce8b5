// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Rank: median, minimum, maximum and despeckle.
void RegisterRankFilters(CommandRegistry& registry);

}  // namespace wib
