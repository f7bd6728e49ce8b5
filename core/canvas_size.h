#pragma once

#include <cstdint>

namespace wib {

class Workspace;

// v / 2 rounded to the nearest integer, halves to the even neighbour.
int HalfToEven(int v);

struct CanvasOffsets {
    int dx = 0;
    int dy = 0;
};

// Where the old image sits in the new canvas for anchor 0..8 (top left, top
// centre, top right, middle left, centre, middle right, bottom left, bottom
// centre, bottom right). Any other anchor gives (0, 0).
CanvasOffsets AnchorOffsets(int anchor, int oldWidth, int oldHeight, int newWidth, int newHeight);

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
};

// Copies the old image's pixels (x, y), 0 <= x < oldWidth, 0 <= y < oldHeight,
// from a block laid out like an old plane (rows of oldWidth + 1 bytes) to
// (x + dx, y + dy) in a block laid out like a new plane, wherever that lies
// inside the new canvas. Stores that keep planes as raw blocks use it too.
void PlaceOldPixels(const std::uint8_t* from, std::uint8_t* to, const CanvasChange& change);

// A store of images of the document's size (animation frames, layers).
class CanvasResizeStore {
  public:
    virtual ~CanvasResizeStore() = default;
    virtual void resizeForCanvas(Workspace& workspace, const CanvasChange& change) = 0;
};

// The canvas-size change: the old image keeps its pixels at the anchor's
// offsets, new area gets the fill colour (main and swap planes) and alpha 255,
// pixels that fall outside are cropped. Saves an undo step before and after
// the new planes go in. A bad size gets its message and changes nothing;
// returns false then.
bool Wib_ChangeBufferSize(Workspace& workspace, int newWidth, int newHeight, std::uint8_t r,
                          std::uint8_t g, std::uint8_t b, int anchor);

}  // namespace wib
