// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frame_composite.h"

#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

std::vector<CompositeSource> FrameSources(const Workspace& workspace, int frame) {
    if (frame == workspace.layers.frame) {
        return VisibleSources(workspace);
    }
    std::vector<CompositeSource> sources;
    for (const Layer& layer : workspace.layers.layers) {
        const LayerProperties& properties = layer.properties;
        if (!properties.visible || properties.opacity == 0 || frame < 0 ||
            static_cast<std::size_t>(frame) >= layer.frames.size()) {
            continue;
        }
        const LayerCell& cell = layer.frames[static_cast<std::size_t>(frame)];
        if (!cell) {
            continue;
        }
        sources.push_back({&cell->r, &cell->g, &cell->b, cell->a.empty() ? nullptr : &cell->a,
                           properties.mode, properties.opacity});
    }
    return sources;
}

}  // namespace wib
