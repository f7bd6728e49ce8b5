// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/layer_composite.h"

#include <cstring>
#include <vector>

namespace wib {

void CompositeRect(std::span<const LayerPlanes> layers, CompositePlanes target, PixelRect rect) {
    if (rect.width <= 0 || rect.height <= 0) {
        return;
    }
    const auto columns = static_cast<std::size_t>(rect.width);
    // An opaque layer has no coverage plane; it reads a row of 255s.
    const std::vector<std::uint8_t> opaque(columns, 255);
    // Row by row, every layer in turn, so that the composite row stays in the
    // cache while the layers are laid over it.
    for (int y = rect.top; y < rect.top + rect.height; ++y) {
        const std::ptrdiff_t at = y * target.stride + rect.left;
        const CompositeRow row{target.r + at, target.g + at, target.b + at, target.a + at};
        std::memset(row.r, 0, columns);
        std::memset(row.g, 0, columns);
        std::memset(row.b, 0, columns);
        std::memset(row.a, 0, columns);
        for (const LayerPlanes& layer : layers) {
            const std::ptrdiff_t from = y * layer.stride + rect.left;
            const std::uint8_t* a = layer.a ? layer.a + from : opaque.data();
            CompositeLayerRow(layer.mode, layer.opacity,
                              {layer.r + from, layer.g + from, layer.b + from, a}, row, rect.width);
        }
    }
}

}  // namespace wib
