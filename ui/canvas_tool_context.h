// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class Form1;
class PaintSession;

// What the tools that show previews on the canvas need: the session (its
// options, and the tool box's command runner, so that every change is one
// command and one undo step, as a script would make it) and the canvas.
struct CanvasToolContext {
    PaintSession& session;
    Form1& canvas;
};

}  // namespace wib
