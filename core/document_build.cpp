#include "core/document_build.h"

#include <new>

#include "core/document_limits.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr const char* kNotEnoughMemory = "Not enough memory for an image of this size.";

}  // namespace

void BuildDocumentPlanes(Workspace& workspace, int width, int height) {
    // Make every plane before touching the document, so that a failure leaves
    // the old image whole.
    Plane r(width, height, 255), g(width, height, 255), b(width, height, 255);
    Plane a(width, height, 255);
    Plane swapR(width, height, 255), swapG(width, height, 255), swapB(width, height, 255);

    Document& doc = workspace.document;
    const bool depthInUse = doc.Depth.has_value();
    doc.Depth.reset();
    doc.RBuffer = std::move(r);
    doc.GBuffer = std::move(g);
    doc.BBuffer = std::move(b);
    doc.ABuffer = std::move(a);
    doc.SwapR = std::move(swapR);
    doc.SwapG = std::move(swapG);
    doc.SwapB = std::move(swapB);
    doc.width = width;
    doc.height = height;
    doc.SelectionBounds = ComputeAlphaBounds(doc.ABuffer, width, height);
    AllocateUndo(workspace);
    if (depthInUse) {
        EnableDepthLayer(workspace);
    }
    workspace.host.view.documentResized();
}

bool Wib_NewBuffer(Workspace& workspace, int width, int height) {
    if (const auto problem = DocumentSizeProblem(width, height)) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    try {
        BuildDocumentPlanes(workspace, width, height);
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kNotEnoughMemory);
        return false;
    }
    Document& doc = workspace.document;
    doc.Zoom = 100;
    doc.ViewAnchorX = -1.0f;
    doc.ViewAnchorY = -1.0f;
    doc.ModifiedFlag = 0;
    doc.FileName.clear();
    Wib_SaveUndo(workspace);
    workspace.host.view.refresh();
    return true;
}

}  // namespace wib
