// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paint_surface.h"

#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

PaintSurface WorkspaceSurface(Workspace& workspace) {
    Document& doc = workspace.document;
    PaintSurface surface;
    surface.colour = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    surface.alpha = &doc.ABuffer;
    if (!doc.Coverage.empty() && !LayerAt(workspace, CurrentLayer(workspace)).lockAlpha) {
        surface.coverage = &doc.Coverage;
    }
    surface.swap = {&doc.SwapR, &doc.SwapG, &doc.SwapB};
    surface.pattern = {&workspace.brush.R, &workspace.brush.G, &workspace.brush.B};
    surface.width = doc.width;
    surface.height = doc.height;
    View& view = workspace.host.view;
    surface.changed = [&view](const DirtyRect& r) {
        view.refreshArea(r.left, r.top, r.right, r.bottom);
    };
    return surface;
}

}  // namespace wib
