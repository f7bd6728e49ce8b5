// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/layered_picture.h"
#include "core/plane.h"

namespace wib {

inline constexpr const char* kBackgroundLayerName = "Background";

// One layer's pixels in one frame, never changed once made: undo steps and the
// layer list share them, and a change makes a new one.
using LayerCell = std::shared_ptr<const LayerPixels>;

// A cell of `pixels`. The pixels themselves are not const, so that the one
// holder of a cell nobody else shares may take them back without a copy.
inline LayerCell MakeLayerCell(LayerPixels&& pixels) {
    return std::make_shared<LayerPixels>(std::move(pixels));
}

struct Layer {
    LayerProperties properties;
    // One cell per animation frame (one for a still picture). The cell of the
    // current layer at the current frame is out of date while it is current:
    // its pixels are the document's main planes and coverage.
    std::vector<LayerCell> frames;
};

// The layer list and which of its cells the document's planes stand for. The
// layers are bottom first; the list is shared by every frame.
struct LayerStack {
    std::vector<Layer> layers{Layer{LayerProperties{kBackgroundLayerName}, {nullptr}}};
    int current = 0;
    int frame = 0;
};

// The layer state an undo step keeps beside the main planes: the list with
// its cells (shared, not copied) and the current layer's coverage.
struct LayerSnapshot {
    LayerStack stack;
    Plane coverage;
};

}  // namespace wib
