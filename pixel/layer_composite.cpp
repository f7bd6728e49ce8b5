// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/layer_composite.h"

#include <cstring>

namespace wib {

void CompositeRect(std::span<const LayerPlanes> layers, CompositePlanes target, PixelRect rect) {
    if (rect.width <= 0 || rect.height <= 0) {
        return;
    }
    const auto columns = static_cast<std::size_t>(rect.width);
    // Row by row, every layer in turn, so that the composite row stays in the
    // cache while the layers are laid over it.
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
        const std::ptrdiff_t at = y * target.stride + rect.x;
        const CompositeRow row{target.r + at, target.g + at, target.b + at, target.a + at};
        std::memset(row.r, 0, columns);
        std::memset(row.g, 0, columns);
        std::memset(row.b, 0, columns);
        std::memset(row.a, 0, columns);
        for (const LayerPlanes& layer : layers) {
            const std::ptrdiff_t from = y * layer.stride + rect.x;
            CompositeLayerRow(layer.mode, layer.opacity,
                              {layer.r + from, layer.g + from, layer.b + from, layer.a + from}, row,
                              rect.width);
        }
    }
}

}  // namespace wib
