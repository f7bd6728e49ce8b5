// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/image_edit.h"

#include <string>

#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

void ShowPointer(Workspace& workspace, int shape) {
    workspace.pointerShape = shape;
    workspace.host.view.pointerShapeChanged(shape);
}

constexpr int kQuestionNo = 2;

void ShowFrameProgress(Prompter& prompter, int done, int count) {
    prompter.status("Frame " + std::to_string(done + 1) + " of " + std::to_string(count));
    prompter.progress(done * 100 / count);
}

// The trial is taken back, then every frame is filtered once, in order, the
// frame change drawing nothing and the filtered frame drawing itself; the
// user may stop between frames, and the frames already done stay filtered.
// Going to a frame copies its stored planes into the main buffer, so that
// copy is not made a second time before the filter runs.
void RepeatOverFrames(Workspace& workspace, const std::function<bool()>& operation, int count) {
    RestoreUndo(workspace);
    Prompter& prompter = workspace.host.prompter;
    prompter.statusOpen("Applying to all frames");
    prompter.allowCancel();
    FrameSequence& frames = workspace.frames();
    Document& doc = workspace.document;
    int done = 0;
    for (; done < count; ++done) {
        ShowFrameProgress(prompter, done, count);
        if (prompter.cancelRequested()) {
            break;
        }
        doc.NoRefreshFlag = -1;
        frames.gotoFrame(done);
        doc.NoRefreshFlag = 0;
        const ImageEdit each(workspace, {.saveUndo = false, .busyPointer = false, .redraw = true});
        operation();
    }
    prompter.statusClose();
    if (done < count) {
        workspace.host.log.line("Stopped after " + std::to_string(done) + " of " +
                                std::to_string(count) + " frames; those frames stay changed.");
    }
    frames.gotoFrame(0);
}

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
        workspace_.events.imageEdited.notify();
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
        RepeatOverFrames(workspace, operation, count);
    }
    return done;
}

}  // namespace wib
