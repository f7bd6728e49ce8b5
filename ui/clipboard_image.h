// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <optional>

#include "core/pixel_block.h"

class QMimeData;

namespace wib {

// The block as a picture with straight (not premultiplied) alpha.
QImage BlockToImage(const PixelBlock& block);

// A picture's pixels as a block placed at (0, 0), its alpha as coverage.
// Empty for no picture or one larger than the largest document.
PixelBlock ImageToBlock(const QImage& image);

// Where a block copied by this program came from, carried on the clipboard
// beside the picture, and which copy it was.
struct BlockMarker {
    QString copyId;
    int x = 0;
    int y = 0;
};

// What copy puts on the system clipboard: the picture as PNG (so that other
// programs keep the alpha) and as an image, with the marker.
QMimeData* BlockMimeData(const PixelBlock& block, const QString& copyId);

// The marker on the clipboard, when a copy of this program put it there.
std::optional<BlockMarker> ReadMarker(const QMimeData& data);

// The picture on the clipboard, PNG preferred; null when there is none.
QImage ClipboardPicture(const QMimeData& data);

}  // namespace wib
