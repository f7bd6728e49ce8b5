// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <cstddef>
#include <cstdint>

namespace wib {

class FrameStore;
class Workspace;

// Colour planes laid out as the document lays them out (rows of `stride`
// bytes); `a` null where opaque.
struct ThumbnailSource {
    const std::uint8_t* r;
    const std::uint8_t* g;
    const std::uint8_t* b;
    const std::uint8_t* a;
    std::size_t stride;
    int width;
    int height;
};

// A small picture of `source` fitted into width x height, one sample per
// thumbnail pixel, over a light checkerboard where not opaque; clear where
// the picture's shape leaves a margin.
QImage Thumbnail(const ThumbnailSource& source, int width, int height);

// Layer `layer`'s pixels in frame `frame` of the animation as a thumbnail:
// the document for the frame shown, the layer's cells or the frame store
// for the others.
QImage LayerFrameThumbnail(const Workspace& workspace, const FrameStore& store, int layer,
                           int frame, int width, int height);

}  // namespace wib
