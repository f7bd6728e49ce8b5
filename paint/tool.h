// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

namespace wib {

// The keys held while the pointer was pressed.
struct ToolModifiers {
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

// One pointer event as the canvas hands it to a tool: the position in tool
// units, the image point times the zoom (the canvas has undone its rotation
// and mirror), the button (1 left, 2 right, 0 any other), the keys
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
    Eraser,
    Fill,
    Gradient,
    SelectRectangle,
    SelectEllipse,
    SelectLasso,
    SelectPolygon,
    MagicWand,
    Line,
    Rectangle,
    Ellipse,
    Zoom,
    Hand,
    Move,
    Transform,
    Crop,
    Text,
    SelectByColour,
};
inline constexpr int kToolCount = static_cast<int>(ToolId::SelectByColour) + 1;

// What the canvas shows under the pointer while a tool is active. A brush
// outline is the brush's own size at the current zoom.
enum class ToolCursor {
    Crosshair,
    Picker,
    CloneSource,
    BrushOutline,
    Fill,
    Zoom,
    Hand,
    Move,
    Text
};

// What a tool draws over the canvas while it works (a dragged rectangle, a
// gradient's line): points in image pixels, joined in order.
struct ToolOverlay {
    enum class Kind { None, Line, Rectangle, Ellipse, Polygon };
    Kind kind = Kind::None;
    std::vector<std::array<float, 2>> points;
    bool closed = false;
};

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
    // The panel holding the tool's options; empty for none.
    virtual const char* optionsPanel() const = 0;
    // The outline the tool is dragging, if any.
    virtual ToolOverlay overlay() const { return {}; }
    // Whether the tool holds something that Enter would apply and Esc drop
    // (an open polygon, a transform in progress, a crop box, text being
    // edited): the canvas then takes those keys before any menu shortcut.
    virtual bool pending() const { return holdsPointer(); }
    // Enter or another tool applies what is pending; Esc drops it.
    virtual void finish() {}
    virtual void cancel() {}
};

}  // namespace wib
