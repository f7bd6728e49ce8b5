// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/commands.h"
#include "core/host/controls.h"
#include "core/workspace.h"

namespace wib {

class CanvasEvents;
class FrameStore;
class ImageFiles;
class PaintSession;

// What the automation server serves: filled in by the program that runs it.
struct AutomationHost {
    Workspace& workspace;
    CommandRegistry& commands;
    Controls& controls;
    std::string appDir;   // the program's folder, for Wib_GetAppDir
    std::string tempDir;  // where plug-ins may put temporary files, for Wib_GetTempDir
    int threadCount;      // worker threads the program uses, for Wib_GetThreadcount
    PaintSession& paint;  // strokes, brushes and colours
    ImageFiles& files;    // opening and saving image files
    FrameStore& frames;   // the animation frames
    // The canvas's pointer input for plug-ins that listen; none without a canvas.
    CanvasEvents* canvasEvents = nullptr;
};

}  // namespace wib
