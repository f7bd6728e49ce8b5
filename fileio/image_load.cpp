// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/image_load.h"

#include <algorithm>
#include <new>

#include "core/document_build.h"
#include "core/document_limits.h"
#include "core/image_edit.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "fileio/file_messages.h"

namespace wib {

namespace {

bool ResizeDocument(Workspace& workspace, int width, int height) {
    Document& doc = workspace.document;
    if (doc.width == width && doc.height == height) {
        SaveUndo(workspace);
        // A flat file makes a one-layer picture; an animation keeps its frames.
        if (!IsFlatPicture(workspace)) {
            ResetLayers(workspace, std::max(1, workspace.frames().frameCount()));
        }
        return true;
    }
    try {
        BuildDocumentPlanes(workspace, width, height);
    } catch (const std::bad_alloc&) {
        return false;
    }
    workspace.view.reset();
    return true;
}

}  // namespace

ImageLoad::ImageLoad(Workspace& workspace, LoadTarget target, int width, int height)
    : workspace_(workspace), target_(target), width_(width), height_(height) {
    if (target_ == LoadTarget::Brush) {
        for (Plane& plane : brush_) {
            plane = Plane(width - 1, height - 1);
        }
    }
}

ImagePlanes ImageLoad::planes() {
    if (target_ == LoadTarget::Brush) {
        return {brush_[0], brush_[1], brush_[2], brush_[3]};
    }
    return DocumentPlanes(workspace_.document);
}

std::optional<ImageLoad> BeginImageLoad(Workspace& workspace, LoadTarget target, int width,
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
                    SaveUndo(workspace);
                }
                break;
            case LoadTarget::Brush:
                break;
        }
    }
    if (ready) {
        try {
            return std::optional<ImageLoad>(std::in_place, workspace, target, width, height);
        } catch (const std::bad_alloc&) {
        }
    }
    workspace.host.prompter.message(kCorruptFileMessage);
    return std::nullopt;
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

void FinishImageLoad(ImageLoad& load, bool fileHadAlpha, const std::string& path) {
    Workspace& workspace = load.workspace_;
    if (load.target_ == LoadTarget::Brush) {
        auto& [r, g, b, a] = load.brush_;
        ApplyLoadedAlpha(a, load.width_, load.height_, fileHadAlpha);
        workspace.brush.assign(std::move(r), std::move(g), std::move(b), std::move(a));
        workspace.brush.setActive(true);
        workspace.events.paintOptionsChanged.notify();
        return;
    }
    Document& doc = workspace.document;
    ApplyLoadedAlpha(doc.ABuffer, load.width_, load.height_, fileHadAlpha);
    if (!path.empty()) {
        doc.FileName = path;
        workspace.events.fileNameChanged.notify();
    }
    SetModified(workspace, path.empty());
    SaveUndo(workspace);
    workspace.host.view.refresh();
}

}  // namespace wib
