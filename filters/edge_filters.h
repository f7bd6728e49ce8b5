// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Edge: Sobel, Laplacian, find edges and threshold edges.
void RegisterEdgeFilters(CommandRegistry& registry);

}  // namespace wib
