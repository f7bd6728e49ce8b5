// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// The keys held while the pointer was pressed.
struct ToolModifiers {
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

// One pointer event as the canvas hands it to a tool: the position in
// canvas-window units, the button (1 left, 2 right, 0 any other), the keys
// and the pen's pressure (1 for a mouse).
struct ToolInput {
    float x = 0, y = 0;
    int button = 0;
    ToolModifiers modifiers;
    double pressure = 1.0;
    bool tablet = false;
};

// The tools, as the paint state names the active one.
enum class ToolId : int {
    Brush = 0,
    ColourPicker = 1,
    CloneSource = 2,
    Move = 3,
    Transform = 4,
    Crop = 5,
    Text = 6
};

// The keys the canvas hands to the active tool.
enum class ToolKey { Enter, Escape };

// What the canvas shows under the pointer while a tool is active.
enum class ToolCursor { Crosshair, Picker, CloneSource, Move, Text };

// A tool turns pointer input on the canvas into changes of the model. The
// canvas forwards press, drag and release and knows nothing of what they do.
class Tool {
  public:
    virtual ~Tool() = default;
    virtual void press(const ToolInput& input) = 0;
    virtual void drag(const ToolInput& input) = 0;
    virtual void release(const ToolInput& input) = 0;
    // True from a press the tool took up to its release: the canvas then
    // sends it every pointer event and starts nothing else.
    virtual bool holdsPointer() const { return false; }
    virtual ToolCursor cursor() const = 0;
    // Whether the tool shows something that Enter would apply or Escape
    // cancel: the canvas then takes those keys before any menu shortcut.
    virtual bool pending() const { return false; }
    // A key pressed on the canvas; true when the tool used it.
    virtual bool key(ToolKey) { return false; }
    // Another tool was chosen: anything shown but not applied goes away.
    virtual void leave() {}
    // The panel holding the tool's options; empty for none.
    virtual const char* optionsPanel() const = 0;
};

}  // namespace wib
