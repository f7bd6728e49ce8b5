// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/plane.h"
#include "pixel/layer_blend.h"

namespace wib {

// What the layers panel shows of one layer; shared by every frame.
struct LayerProperties {
    std::string name;
    std::uint8_t opacity = 255;
    BlendMode mode = BlendMode::Normal;
    bool visible = true;
    bool lockPixels = false;  // no painting or filtering of the layer
    bool lockAlpha = false;   // painting keeps the layer's coverage as it is

    bool operator==(const LayerProperties&) const = default;
};

// One layer's pixels in one frame: straight colour and coverage, every plane
// with upper bounds (width, height) of its picture.
struct LayerPixels {
    Plane r, g, b, a;
};

// A whole layered picture as the layered files hold it: the layer list, bottom
// first, and for every frame the pixels of every layer. A still picture has
// one frame.
struct LayeredPicture {
    int width = 0;
    int height = 0;
    std::vector<LayerProperties> layers;
    // frames[f][l] is layer l of frame f; every frame has one entry per layer.
    std::vector<std::vector<LayerPixels>> frames;
    int currentLayer = 0;
    int currentFrame = 0;
};

}  // namespace wib
