// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/merged_block.h"

#include "core/document.h"
#include "core/layer_composite.h"
#include "core/workspace.h"

namespace wib {

PixelBlock CopyMergedBlock(const Workspace& workspace) {
    const Document& doc = workspace.document;
    const AlphaBounds box = SelectionBounds(doc);
    if (box.empty()) {
        return {};
    }
    LayerPixels merged = TransparentPixels(doc.width, doc.height);
    CompositeSources(VisibleSources(workspace),
                     {box.left, box.top, box.right - box.left + 1, box.bottom - box.top + 1},
                     merged);
    for (int y = box.top; y <= box.bottom; ++y) {
        std::uint8_t* coverage = merged.a.row(y);
        const std::uint8_t* matte = doc.ABuffer.row(y);
        for (int x = box.left; x <= box.right; ++x) {
            coverage[x] = static_cast<std::uint8_t>((coverage[x] * matte[x] + 127) / 255);
        }
    }
    return BlockOfPlanes(merged.r, merged.g, merged.b, merged.a, box);
}

}  // namespace wib
