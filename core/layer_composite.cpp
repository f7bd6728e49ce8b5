// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_composite.h"

#include <algorithm>
#include <array>

#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

void CompositeSources(const std::vector<CompositeSource>& sources, const PixelRect& rect,
                      LayerPixels& out) {
    const int right = std::min(rect.right, out.r.ubX());
    const int bottom = std::min(rect.bottom, out.r.ubY());
    const int left = std::max(rect.left, 0);
    const int top = std::max(rect.top, 0);
    if (right < left || bottom < top) {
        return;
    }
    const int count = right - left + 1;
    // An opaque layer reads its coverage from a row of 255s.
    std::vector<std::uint8_t> opaque(static_cast<std::size_t>(count), 255);
    for (int y = top; y <= bottom; ++y) {
        const CompositeRow target{out.r.row(y) + left, out.g.row(y) + left, out.b.row(y) + left,
                                  out.a.row(y) + left};
        std::fill_n(target.a, count, 0);
        std::fill_n(target.r, count, 0);
        std::fill_n(target.g, count, 0);
        std::fill_n(target.b, count, 0);
        for (const CompositeSource& source : sources) {
            const LayerRow row{source.r->row(y) + left, source.g->row(y) + left,
                               source.b->row(y) + left,
                               source.a ? source.a->row(y) + left : opaque.data()};
            CompositeLayerRow(source.mode, static_cast<std::uint8_t>(source.opacity), row, target,
                              count);
        }
    }
}

std::vector<CompositeSource> VisibleSources(const Workspace& workspace) {
    std::vector<CompositeSource> sources;
    for (int i = 0; i < LayerCount(workspace); ++i) {
        const LayerProperties& properties = LayerAt(workspace, i);
        if (!properties.visible || properties.opacity == 0) {
            continue;
        }
        const LayerPlanesView view = LayerPlanesOf(workspace, i);
        sources.push_back({view.r, view.g, view.b, view.a, properties.mode, properties.opacity});
    }
    return sources;
}

LayerPixels TransparentPixels(int width, int height) {
    return {Plane(width, height, 0), Plane(width, height, 0), Plane(width, height, 0),
            Plane(width, height, 0)};
}

LayerPixels CompositePicture(const Workspace& workspace) {
    const Document& doc = workspace.document;
    LayerPixels out = TransparentPixels(doc.width, doc.height);
    CompositeSources(VisibleSources(workspace), {0, 0, doc.width - 1, doc.height - 1}, out);
    return out;
}

}  // namespace wib
