// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/lut_filter.h"

#include "filters/filter_bands.h"

namespace wib {

void ApplyLuts(const FilterContext& context, const ChannelLuts& luts, bool grey) {
    ForEachRow(context, [&](int y) {
        ApplyLutsRow(SourceRow(context, y), TargetRow(context, y), luts, grey,
                     context.source.width);
    });
}

}  // namespace wib
