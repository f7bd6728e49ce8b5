// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include "core/layer_edit.h"

namespace wib {

// The squares of the thumbnails' checkerboard, light and lighter grey as the
// canvas shows transparency.
inline constexpr int kThumbnailSquare = 4;

// A small picture of one layer (`width` x `height` image pixels) that fits in
// `size` x `size` with its aspect kept, each pixel the nearest image pixel
// laid over a checkerboard by its coverage. Sampling, not averaging, keeps it
// cheap enough to make after every stroke.
QImage LayerThumbnail(const LayerPlanesView& planes, int width, int height, int size);

}  // namespace wib
