// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/canvas_size.h"

#include <algorithm>
#include <array>
#include <new>

#include "core/document_build.h"
#include "core/document_limits.h"
#include "core/image_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "pixel/blit.h"
#include "pixel/rounding.h"

namespace wib {

namespace {

constexpr const char* kNotEnoughMemory = "Not enough memory to change the canvas size.";

// The old image flipped or turned, pixel by pixel: a rare, whole-picture change.
void PlaceTurnedPixels(const std::uint8_t* from, std::uint8_t* to, const CanvasChange& change) {
    const std::size_t fromStride = static_cast<std::size_t>(change.oldWidth) + 1;
    const std::size_t toStride = static_cast<std::size_t>(change.newWidth) + 1;
    const int lastX = change.oldWidth - 1;
    const int lastY = change.oldHeight - 1;
    for (int y = 0; y < change.oldHeight; ++y) {
        const std::uint8_t* row = from + static_cast<std::size_t>(y) * fromStride;
        for (int x = 0; x < change.oldWidth; ++x) {
            int nx = x;
            int ny = y;
            switch (change.turn) {
                case PictureTurn::FlipHorizontal:
                    nx = lastX - x;
                    break;
                case PictureTurn::FlipVertical:
                    ny = lastY - y;
                    break;
                case PictureTurn::Clockwise:
                    nx = lastY - y;
                    ny = x;
                    break;
                case PictureTurn::Anticlockwise:
                    nx = y;
                    ny = lastX - x;
                    break;
                case PictureTurn::HalfTurn:
                    nx = lastX - x;
                    ny = lastY - y;
                    break;
                case PictureTurn::None:
                    break;
            }
            nx += change.offsets.dx;
            ny += change.offsets.dy;
            if (nx >= 0 && ny >= 0 && nx < change.newWidth && ny < change.newHeight) {
                to[static_cast<std::size_t>(ny) * toStride + static_cast<std::size_t>(nx)] = row[x];
            }
        }
    }
}

}  // namespace

void PlaceOldPixels(const std::uint8_t* from, std::uint8_t* to, const CanvasChange& change) {
    if (change.turn != PictureTurn::None) {
        PlaceTurnedPixels(from, to, change);
        return;
    }
    const int dx = change.offsets.dx;
    const int dy = change.offsets.dy;
    const int x0 = std::max(0, -dx);
    const int x1 = std::min(change.oldWidth, change.newWidth - dx);
    const int y0 = std::max(0, -dy);
    const int y1 = std::min(change.oldHeight, change.newHeight - dy);
    if (x1 <= x0 || y1 <= y0) {
        return;
    }
    const std::size_t fromStride = static_cast<std::size_t>(change.oldWidth) + 1;
    const std::size_t toStride = static_cast<std::size_t>(change.newWidth) + 1;
    RectCopy(from + static_cast<std::size_t>(y0) * fromStride + x0, fromStride,
             to + static_cast<std::size_t>(y0 + dy) * toStride + x0 + dx, toStride,
             static_cast<std::size_t>(x1 - x0), static_cast<std::size_t>(y1 - y0));
}

CanvasOffsets AnchorOffsets(int anchor, int oldWidth, int oldHeight, int newWidth, int newHeight) {
    if (anchor < 0 || anchor > 8) {
        return {};
    }
    const int dW = newWidth - oldWidth;
    const int dH = newHeight - oldHeight;
    const std::array<int, 3> columns{0, RoundHalfEven(dW / 2.0), dW};
    const std::array<int, 3> rows{0, RoundHalfEven(dH / 2.0), dH};
    return {columns[anchor % 3], rows[anchor / 3]};
}

namespace {

// The change itself, whichever way it was asked for.
bool ChangeCanvas(Workspace& workspace, const CanvasChange& change) {
    const int newWidth = change.newWidth;
    const int newHeight = change.newHeight;
    if (const auto problem = DocumentSizeProblem(newWidth, newHeight)) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    Document& doc = workspace.document;
    const PackedColour fill{change.fillR, change.fillG, change.fillB};

    // Everything the change needs is made before anything changes, so that a
    // failure leaves the document and every store as they were.
    std::array<Plane, 7> made;
    FreshPlanes fresh;
    try {
        const std::array<std::uint8_t, 7> fills{fill.r, fill.g, fill.b, 255,
                                                fill.r, fill.g, fill.b};
        for (std::size_t i = 0; i < made.size(); ++i) {
            made[i] = Plane(newWidth, newHeight, fills[i]);
        }
        fresh = MakeFreshPlanes(newWidth, newHeight);
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kNotEnoughMemory);
        return false;
    }

    // A store that cannot follow refuses before it changes, and so does
    // everything after it: the stores are all-or-nothing.
    for (CanvasResizeStore* store : workspace.resizeStores) {
        if (store->resizeBeforePlanes() && !store->resizeForCanvas(workspace, change)) {
            workspace.host.prompter.message(kNotEnoughMemory);
            return false;
        }
    }

    const std::array<Plane*, 7> old{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer, &doc.ABuffer,
                                    &doc.SwapR,   &doc.SwapG,   &doc.SwapB};
    for (std::size_t i = 0; i < made.size(); ++i) {
        PlaceOldPixels(old[i]->data(), made[i].data(), change);
    }

    InstallFreshPlanes(workspace, std::move(fresh));
    workspace.view.reset();

    SaveUndo(workspace);
    for (std::size_t i = 0; i < made.size(); ++i) {
        *old[i] = std::move(made[i]);
    }
    SaveUndo(workspace);
    SetModified(workspace, true);

    for (CanvasResizeStore* store : workspace.resizeStores) {
        if (!store->resizeBeforePlanes()) {
            store->resizeForCanvas(workspace, change);
        }
    }
    workspace.host.view.refresh();
    return true;
}

}  // namespace

bool ChangeCanvasSize(Workspace& workspace, int newWidth, int newHeight, PackedColour fill,
                      int anchor) {
    const Document& doc = workspace.document;
    return ChangeCanvasSize(workspace, newWidth, newHeight, fill,
                            AnchorOffsets(anchor, doc.width, doc.height, newWidth, newHeight));
}

bool ChangeCanvasSize(Workspace& workspace, int newWidth, int newHeight, PackedColour fill,
                      CanvasOffsets offsets) {
    const Document& doc = workspace.document;
    return ChangeCanvas(
        workspace, {doc.width, doc.height, newWidth, newHeight, offsets, fill.r, fill.g, fill.b});
}

bool TurnPicture(Workspace& workspace, PictureTurn turn) {
    const Document& doc = workspace.document;
    const bool quarter = turn == PictureTurn::Clockwise || turn == PictureTurn::Anticlockwise;
    const PackedColour fill = workspace.colours.secondary;
    return ChangeCanvas(workspace, {doc.width, doc.height, quarter ? doc.height : doc.width,
                                    quarter ? doc.width : doc.height, CanvasOffsets{}, fill.r,
                                    fill.g, fill.b, turn});
}

}  // namespace wib
