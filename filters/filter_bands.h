// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "filters/filter_row.h"
#include "filters/parallel_rows.h"
#include "pixel/colour_adjust.h"
#include "pixel/distort.h"

namespace wib {

// Row y of the source, and of the target, as the pixel kernels take them.
inline RgbRow SourceRow(const FilterContext& context, int y) {
    const ColourPlanes& s = context.source;
    return {s[0].row(y), s[1].row(y), s[2].row(y)};
}
inline RgbOutRow TargetRow(const FilterContext& context, int y) {
    const ColourPlanes& t = context.target;
    return {t[0].row(y), t[1].row(y), t[2].row(y)};
}

// The whole source, and the target, for kernels that read across rows.
inline RgbPlanes SourceImage(const FilterContext& context) {
    const ColourPlanes& s = context.source;
    return {{s[0].data(), s[1].data(), s[2].data()}, s[0].stride(), s.width, s.height};
}
inline RgbTarget TargetImage(const FilterContext& context) {
    const ColourPlanes& t = context.target;
    return {{t[0].data(), t[1].data(), t[2].data()}, t[0].stride()};
}

// Runs `row(y)` for every image row, the rows split over the context's bands.
template <typename Row>
void ForEachRow(const FilterContext& context, Row row) {
    ParallelRows(context.threads, context.source.height, [&row](int first, int end) {
        for (int y = first; y < end; ++y) {
            row(y);
        }
    });
}

}  // namespace wib
