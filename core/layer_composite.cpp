// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_composite.h"

#include <algorithm>
#include <array>

#include "core/frame_composite.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/layer_composite.h"

namespace wib {

void CompositeSources(const std::vector<CompositeSource>& sources, const PixelRect& rect,
                      LayerPixels& out) {
    // The planes' spare column and row are no part of the picture.
    const int left = std::max(rect.left, 0);
    const int top = std::max(rect.top, 0);
    const int right = std::min(rect.left + rect.width, out.r.ubX());
    const int bottom = std::min(rect.top + rect.height, out.r.ubY());
    if (right <= left || bottom <= top) {
        return;
    }
    const auto stride = static_cast<std::ptrdiff_t>(out.r.stride());
    std::vector<LayerPlanes> layers;
    layers.reserve(sources.size());
    for (const CompositeSource& source : sources) {
        layers.push_back({source.r->data(), source.g->data(), source.b->data(),
                          source.a ? source.a->data() : nullptr, stride, source.mode,
                          static_cast<std::uint8_t>(source.opacity)});
    }
    CompositeRect(layers, {out.r.data(), out.g.data(), out.b.data(), out.a.data(), stride},
                  {left, top, right - left, bottom - top});
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
    CompositeSources(VisibleSources(workspace), {0, 0, doc.width, doc.height}, out);
    return out;
}

LayerPixels CompositeOfFrame(const Workspace& workspace, int frame) {
    const Document& doc = workspace.document;
    LayerPixels out = TransparentPixels(doc.width, doc.height);
    CompositeSources(FrameSources(workspace, frame), {0, 0, doc.width, doc.height}, out);
    return out;
}

}  // namespace wib
