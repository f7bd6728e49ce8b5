// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/document_build.h"

#include <array>
#include <new>

#include "core/document_limits.h"
#include "core/image_edit.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

FreshPlanes MakeFreshPlanes(int width, int height) {
    FreshPlanes fresh{width, height, {}};
    for (Plane& plane : fresh.planes) {
        plane = Plane(width, height, 255);
    }
    return fresh;
}

void InstallFreshPlanes(Workspace& workspace, FreshPlanes&& fresh) {
    Document& doc = workspace.document;
    const bool depthInUse = doc.Depth.has_value();
    doc.Depth.reset();
    const std::array<Plane*, 7> planes{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer, &doc.ABuffer,
                                       &doc.SwapR,   &doc.SwapG,   &doc.SwapB};
    for (std::size_t i = 0; i < planes.size(); ++i) {
        *planes[i] = std::move(fresh.planes[i]);
    }
    doc.width = fresh.width;
    doc.height = fresh.height;
    AllocateUndo(workspace);
    if (depthInUse) {
        EnableDepthLayer(workspace);
    }
    workspace.host.view.documentResized();
}

void BuildDocumentPlanes(Workspace& workspace, int width, int height) {
    InstallFreshPlanes(workspace, MakeFreshPlanes(width, height));
    ResetLayers(workspace);
}

bool NewDocument(Workspace& workspace, int width, int height) {
    if (const auto problem = DocumentSizeProblem(width, height)) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    try {
        BuildDocumentPlanes(workspace, width, height);
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kImageMemoryMessage);
        return false;
    }
    workspace.view.reset();
    workspace.document.FileName.clear();
    workspace.events.fileNameChanged.notify();
    SetModified(workspace, false);
    SaveUndo(workspace);
    workspace.host.view.refresh();
    return true;
}

}  // namespace wib
