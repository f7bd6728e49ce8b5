// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace wib {

class Workspace;

// What one edit of the image does around the change itself.
struct EditOptions {
    bool saveUndo = true;     // plug-ins save undo themselves
    bool busyPointer = true;  // strokes keep the painting pointer
    bool redraw = true;       // strokes redraw each segment as they go
};

// A plug-in's change: the plug-in saves undo and asks for redraws itself, so
// the bracket only marks the document modified.
inline constexpr EditOptions kPluginEdit{.saveUndo = false, .busyPointer = false, .redraw = false};

// Shows the busy pointer while it lives and then gives back the pointer it
// found, whatever shape that was.
class BusyPointer {
  public:
    explicit BusyPointer(Workspace& workspace);
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    Workspace& workspace_;
    int remembered_;
};

// The bracket every change of the image runs in: on construction it saves an
// undo step and shows the busy pointer (remembering the pointer it replaces);
// on destruction it marks the document modified, redraws as the refresh flags
// allow and gives the remembered pointer back. An operation that turned out to
// change nothing says so with `nothingChanged()`.
class ImageEdit {
  public:
    explicit ImageEdit(Workspace& workspace, EditOptions options = {});
    ~ImageEdit();
    ImageEdit(const ImageEdit&) = delete;
    ImageEdit& operator=(const ImageEdit&) = delete;

    void nothingChanged() { changed_ = false; }

  private:
    Workspace& workspace_;
    EditOptions options_;
    std::optional<BusyPointer> busy_;
    bool changed_ = true;
};

// Marks the document as holding unsaved changes (or not) and tells the
// views when that changes.
void SetModified(Workspace& workspace, bool modified);

// Runs `operation` on the current image in the bracket and, when the document
// is an animation of two or more frames and `repeatQuestion` is not empty,
// asks that question and on yes takes the trial back and runs the operation
// once on every frame, in order, before going back to frame 0. Returns what
// the first run returned (false: it refused and has told the user why).
bool RunImageOperation(Workspace& workspace, const std::function<bool()>& operation,
                       const std::string& repeatQuestion = {});

}  // namespace wib
