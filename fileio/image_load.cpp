#include "fileio/image_load.h"

#include <algorithm>
#include <new>

#include "core/document_build.h"
#include "core/document_limits.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "fileio/file_messages.h"

namespace wib {

namespace {

bool ResizeDocument(Workspace& workspace, int width, int height) {
    Document& doc = workspace.document;
    if (doc.width == width && doc.height == height) {
        Wib_SaveUndo(workspace);
        return true;
    }
    try {
        BuildDocumentPlanes(workspace, width, height);
    } catch (const std::bad_alloc&) {
        return false;
    }
    doc.Zoom = 100;
    doc.ViewAnchorX = -1.0f;
    doc.ViewAnchorY = -1.0f;
    return true;
}

bool MakeBrushPlanes(Document& doc, int width, int height) {
    try {
        Plane r(width - 1, height - 1), g(width - 1, height - 1), b(width - 1, height - 1);
        Plane a(width - 1, height - 1), mask(width - 1, height - 1);
        doc.BrushR = std::move(r);
        doc.BrushG = std::move(g);
        doc.BrushB = std::move(b);
        doc.BrushA = std::move(a);
        doc.BrushMask = std::move(mask);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

}  // namespace

std::optional<ImagePlanes> BeginImageLoad(Workspace& workspace, LoadTarget target, int width,
                                          int height) {
    Document& doc = workspace.document;
    bool ready = !DocumentSizeProblem(width, height).has_value();
    if (ready) {
        switch (target) {
            case LoadTarget::Document:
                ready = ResizeDocument(workspace, width, height);
                break;
            case LoadTarget::DocumentKeepSize:
                ready = doc.width == width && doc.height == height;
                if (ready) {
                    Wib_SaveUndo(workspace);
                }
                break;
            case LoadTarget::Brush:
                ready = MakeBrushPlanes(doc, width, height);
                break;
        }
    }
    if (!ready) {
        workspace.host.prompter.message(kCorruptFileMessage);
        return std::nullopt;
    }
    return target == LoadTarget::Brush ? BrushPlanes(doc) : DocumentPlanes(doc);
}

void ApplyLoadedAlpha(Plane& alpha, int width, int height, bool fileHadAlpha) {
    bool allZero = true;
    for (int y = 0; fileHadAlpha && allZero && y < height; ++y) {
        const std::uint8_t* row = alpha.row(y);
        allZero = std::all_of(row, row + width, [](std::uint8_t value) { return value == 0; });
    }
    if (allZero) {
        alpha.fill(255);
    }
}

void FinishImageLoad(Workspace& workspace, LoadTarget target, int width, int height,
                     bool fileHadAlpha, const std::string& path) {
    Document& doc = workspace.document;
    if (target == LoadTarget::Brush) {
        ApplyLoadedAlpha(doc.BrushA, width, height, fileHadAlpha);
        const std::uint8_t* alpha = doc.BrushA.data();
        std::uint8_t* mask = doc.BrushMask.data();
        for (std::size_t i = 0; i < doc.BrushA.count(); ++i) {
            mask[i] = static_cast<std::uint8_t>(255 - alpha[i]);
        }
        doc.CustomBrushActive = true;
        return;
    }
    ApplyLoadedAlpha(doc.ABuffer, width, height, fileHadAlpha);
    doc.SelectionBounds = ComputeAlphaBounds(doc.ABuffer, doc.width, doc.height);
    if (path.empty()) {
        doc.ModifiedFlag = 255;
    } else {
        doc.FileName = path;
        doc.ModifiedFlag = 0;
    }
    Wib_SaveUndo(workspace);
    workspace.host.view.refresh();
    workspace.host.view.completeRefresh();
}

}  // namespace wib
