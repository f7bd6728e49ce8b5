// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "filters/filter_row.h"
#include "pixel/colour_adjust.h"

namespace wib {

// The look-up-table kernel the colour filters and the automation's tables
// share: each colour plane through its own table, and with `grey` the
// looked-up colour becomes its grey in all three planes.
void ApplyLuts(const FilterContext& context, const ChannelLuts& luts, bool grey = false);

}  // namespace wib
