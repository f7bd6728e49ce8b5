// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/image_edit.h"

#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

void ShowPointer(Workspace& workspace, int shape) {
    workspace.pointerShape = shape;
    workspace.host.view.pointerShapeChanged(shape);
}

constexpr int kQuestionNo = 2;

}  // namespace

void SetModified(Workspace& workspace, bool modified) {
    if (workspace.document.modified != modified) {
        workspace.document.modified = modified;
        workspace.events.modifiedChanged.notify();
    }
}

BusyPointer::BusyPointer(Workspace& workspace)
    : workspace_(workspace), remembered_(workspace.pointerShape) {
    ShowPointer(workspace_, kBusyPointerShape);
}

BusyPointer::~BusyPointer() {
    ShowPointer(workspace_, remembered_);
}

ImageEdit::ImageEdit(Workspace& workspace, EditOptions options)
    : workspace_(workspace), options_(options) {
    if (options_.saveUndo) {
        SaveUndo(workspace_);
    }
    if (options_.busyPointer) {
        busy_.emplace(workspace_);
    }
}

ImageEdit::~ImageEdit() {
    if (changed_) {
        SetModified(workspace_, true);
        if (options_.redraw) {
            workspace_.host.view.refresh();
        }
    }
}

bool RunImageOperation(Workspace& workspace, const std::function<bool()>& operation,
                       const std::string& repeatQuestion) {
    // The busy pointer stays up across the repeat; each run has its own
    // bracket, so that it marks and redraws.
    const BusyPointer busy(workspace);
    bool done = false;
    {
        ImageEdit trial(workspace, {.saveUndo = true, .busyPointer = false, .redraw = true});
        done = operation();
        if (!done) {
            trial.nothingChanged();
        }
    }
    FrameSequence& frames = workspace.frames();
    const int count = frames.frameCount();
    if (done && !repeatQuestion.empty() && count >= 2 &&
        workspace.host.prompter.question(repeatQuestion) != kQuestionNo) {
        RestoreUndo(workspace);
        Document& doc = workspace.document;
        for (int i = 0; i < count; ++i) {
            doc.NoRefreshFlag = -1;
            frames.gotoFrame(i);
            doc.NoRefreshFlag = 0;
            frames.loadStoredFrame(i);
            ImageEdit each(workspace, {.saveUndo = false, .busyPointer = false, .redraw = true});
            operation();
        }
        frames.gotoFrame(0);
    }
    return done;
}

}  // namespace wib
