#include "core/canvas_size.h"

#include <algorithm>
#include <array>
#include <new>

#include "core/document_build.h"
#include "core/document_limits.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "pixel/blit.h"

namespace wib {

namespace {

constexpr const char* kNotEnoughMemory = "Not enough memory to change the canvas size.";

}  // namespace

void PlaceOldPixels(const std::uint8_t* from, std::uint8_t* to, const CanvasChange& change) {
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

int HalfToEven(int v) {
    const int floorHalf = v >= 0 ? v / 2 : -((-v + 1) / 2);
    if (v % 2 == 0) {
        return floorHalf;
    }
    return floorHalf % 2 == 0 ? floorHalf : floorHalf + 1;
}

CanvasOffsets AnchorOffsets(int anchor, int oldWidth, int oldHeight, int newWidth, int newHeight) {
    if (anchor < 0 || anchor > 8) {
        return {};
    }
    const int dW = newWidth - oldWidth;
    const int dH = newHeight - oldHeight;
    const std::array<int, 3> columns{0, HalfToEven(dW), dW};
    const std::array<int, 3> rows{0, HalfToEven(dH), dH};
    return {columns[anchor % 3], rows[anchor / 3]};
}

bool Wib_ChangeBufferSize(Workspace& workspace, int newWidth, int newHeight, std::uint8_t r,
                          std::uint8_t g, std::uint8_t b, int anchor) {
    if (const auto problem = DocumentSizeProblem(newWidth, newHeight)) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    Document& doc = workspace.document;
    const CanvasChange change{doc.width,
                              doc.height,
                              newWidth,
                              newHeight,
                              AnchorOffsets(anchor, doc.width, doc.height, newWidth, newHeight),
                              r,
                              g,
                              b};

    // The temporaries are made before anything changes, so that a failure
    // leaves the document (and any stored frames) as they were.
    std::array<Plane, 7> made;
    try {
        const std::array<std::uint8_t, 7> fills{r, g, b, 255, r, g, b};
        for (std::size_t i = 0; i < made.size(); ++i) {
            made[i] = Plane(newWidth, newHeight, fills[i]);
        }
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kNotEnoughMemory);
        return false;
    }

    if (workspace.frameStore != nullptr) {
        workspace.frameStore->resizeForCanvas(workspace, change);
    }

    const std::array<Plane*, 7> old{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer, &doc.ABuffer,
                                    &doc.SwapR,   &doc.SwapG,   &doc.SwapB};
    for (std::size_t i = 0; i < made.size(); ++i) {
        PlaceOldPixels(old[i]->data(), made[i].data(), change);
    }

    try {
        BuildDocumentPlanes(workspace, newWidth, newHeight);
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kNotEnoughMemory);
        return false;
    }
    doc.Zoom = 100;
    doc.ViewAnchorX = -1.0f;
    doc.ViewAnchorY = -1.0f;

    Wib_SaveUndo(workspace);
    for (std::size_t i = 0; i < made.size(); ++i) {
        *old[i] = std::move(made[i]);
    }
    Wib_SaveUndo(workspace);
    doc.SelectionBounds = ComputeAlphaBounds(doc.ABuffer, doc.width, doc.height);
    doc.ModifiedFlag = 255;

    if (workspace.layerStore != nullptr) {
        workspace.layerStore->resizeForCanvas(workspace, change);
    }
    workspace.host.view.refresh();
    return true;
}

}  // namespace wib
