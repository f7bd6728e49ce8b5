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

ImageEdit::ImageEdit(Workspace& workspace, EditOptions options)
    : workspace_(workspace), options_(options), rememberedPointer_(workspace.pointerShape) {
    if (options_.saveUndo) {
        SaveUndo(workspace_);
    }
    if (options_.busyPointer) {
        ShowPointer(workspace_, kBusyPointerShape);
    }
}

ImageEdit::~ImageEdit() {
    if (changed_) {
        SetModified(workspace_, true);
        if (options_.redraw) {
            workspace_.host.view.refresh();
        }
    }
    if (options_.busyPointer) {
        ShowPointer(workspace_, rememberedPointer_);
    }
}

bool RunImageOperation(Workspace& workspace, const std::function<bool()>& operation,
                       const std::string& repeatQuestion) {
    // The busy pointer stays up across the repeat; each run has its own
    // undo-less bracket so that it marks and redraws.
    const int remembered = workspace.pointerShape;
    ShowPointer(workspace, kBusyPointerShape);
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
    ShowPointer(workspace, remembered);
    return done;
}

}  // namespace wib
