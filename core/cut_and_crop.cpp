// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/cut_and_crop.h"

#include "core/canvas_size.h"
#include "core/commands.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/blend.h"

namespace wib {

void ClearSelectedPixels(Workspace& workspace) {
    Document& doc = workspace.document;
    if (CurrentLayer(workspace) != 0) {
        if (doc.Coverage.empty()) {
            doc.Coverage = Plane(doc.width, doc.height, 255);
        }
        for (int y = 0; y < doc.height; ++y) {
            const std::uint8_t* matte = doc.ABuffer.row(y);
            std::uint8_t* coverage = doc.Coverage.row(y);
            for (int x = 0; x < doc.width; ++x) {
                coverage[x] = MaskMix(0, coverage[x], 255 - matte[x]);
            }
        }
        return;
    }
    const PackedColour colour = workspace.colours.secondary;
    const int values[3] = {colour.r, colour.g, colour.b};
    Plane* planes[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    for (int y = 0; y < doc.height; ++y) {
        const std::uint8_t* matte = doc.ABuffer.row(y);
        for (int c = 0; c < 3; ++c) {
            std::uint8_t* row = planes[c]->row(y);
            for (int x = 0; x < doc.width; ++x) {
                row[x] = MaskMix(values[c], row[x], 255 - matte[x]);
            }
        }
    }
}

bool CropToSelection(Workspace& workspace) {
    const AlphaBounds box = SelectionBounds(workspace.document);
    if (box.empty()) {
        workspace.host.prompter.message(kNothingSelected);
        return false;
    }
    return ChangeCanvasSize(workspace, box.right - box.left + 1, box.bottom - box.top + 1,
                            workspace.colours.secondary, CanvasOffsets{-box.left, -box.top});
}

void RegisterCropCommands(CommandRegistry& registry) {
    // The canvas-size change saves its own undo steps, so no bracket here.
    registry.add(
        {"image.crop_to_selection",
         "C&rop to selection",
         "Image",
         "",
         {},
         [](Workspace& workspace, const ParamValues&) { return CropToSelection(workspace); }});
}

}  // namespace wib
