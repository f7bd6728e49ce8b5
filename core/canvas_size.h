// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/packed_colour.h"

namespace wib {

class Workspace;

struct CanvasOffsets {
    int dx = 0;
    int dy = 0;
};

// Where the old image sits in the new canvas for anchor 0..8 (top left, top
// centre, top right, middle left, centre, middle right, bottom left, bottom
// centre, bottom right). Any other anchor gives (0, 0).
CanvasOffsets AnchorOffsets(int anchor, int oldWidth, int oldHeight, int newWidth, int newHeight);

// How the old image goes into the new canvas: as it is, flipped, or turned
// (a quarter turn swaps width and height). The offsets apply after the turn.
enum class PictureTurn { None, FlipHorizontal, FlipVertical, Clockwise, Anticlockwise, HalfTurn };

// One canvas-size change, as the stores that hold images of the document's
// size need it to resize theirs the same way.
struct CanvasChange {
    int oldWidth;
    int oldHeight;
    int newWidth;
    int newHeight;
    CanvasOffsets offsets;
    std::uint8_t fillR;
    std::uint8_t fillG;
    std::uint8_t fillB;
    PictureTurn turn = PictureTurn::None;
};

// Copies the old image's pixels (x, y), 0 <= x < oldWidth, 0 <= y < oldHeight,
// from a block laid out like an old plane (rows of oldWidth + 1 bytes) to
// (x + dx, y + dy), turned first as the change says, in a block laid out like a new plane, wherever
// that lies inside the new canvas. Stores that keep planes as raw blocks use it too.
void PlaceOldPixels(const std::uint8_t* from, std::uint8_t* to, const CanvasChange& change);

// A store of images of the document's size (animation frames, layers).
class CanvasResizeStore {
  public:
    virtual ~CanvasResizeStore() = default;
    // Whether the store follows before the document planes are rebuilt (the
    // frames) or after (the layers).
    virtual bool resizeBeforePlanes() const = 0;
    // Resizes every image the store holds; false, with everything left as it
    // was, when it cannot.
    virtual bool resizeForCanvas(Workspace& workspace, const CanvasChange& change) = 0;
};

// The canvas-size change: the old image keeps its pixels at the anchor's
// offsets, new area gets the fill colour (main and swap planes) and alpha 255,
// pixels that fall outside are cropped. A store that cannot follow, or memory
// that runs out, changes nothing. Saves an undo step before and after
// the new planes go in. A bad size gets its message and changes nothing;
// returns false then.
bool ChangeCanvasSize(Workspace& workspace, int newWidth, int newHeight, PackedColour fill,
                      int anchor);
// The same change with the old image placed at `offsets` in the new canvas
// (negative offsets crop its left and top).
bool ChangeCanvasSize(Workspace& workspace, int newWidth, int newHeight, PackedColour fill,
                      CanvasOffsets offsets);

// The whole picture flipped or turned: every layer and frame, the selection
// and the swap image, through the canvas-size change (so undo and the stores
// follow as they do there). Returns false, having said why, when it cannot.
bool TurnPicture(Workspace& workspace, PictureTurn turn);

}  // namespace wib
