// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class Form1;
class Workspace;

// What the tools that work through commands and show previews on the canvas
// need: they change the image only by running commands, so every change is
// one undo step and scripts can do the same.
struct CanvasToolContext {
    Workspace& workspace;
    CommandRegistry& commands;
    Form1& canvas;
};

}  // namespace wib
