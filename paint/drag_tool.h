// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "paint/tool.h"

namespace wib {

class PaintSession;

// A tool that acts on the line from its press to its release (a selection
// box, a gradient, a shape) and shows that line, or the box or ellipse it
// spans, while dragging. Points are image pixels. Shift held while dragging
// keeps a line to steps of 45 degrees and a box to a square (an ellipse to a
// circle); Shift at the press is the tool's own (a selection's add mode).
class DragTool : public Tool {
  public:
    DragTool(PaintSession& session, ToolOverlay::Kind shape) : session_(session), shape_(shape) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput& input) override;
    bool holdsPointer() const override { return held_; }
    ToolOverlay overlay() const override;
    void cancel() override { held_ = false; }

  protected:
    using Point = std::array<double, 2>;
    // Called once the drag ends, with the keys held at the press.
    virtual void apply(Point from, Point to, const ToolModifiers& modifiers) = 0;
    PaintSession& session() { return session_; }

  private:
    // Where the drag ends now: the pointer, or the constrained point.
    Point end() const;

    PaintSession& session_;
    ToolOverlay::Kind shape_;
    bool held_ = false;
    Point from_{}, to_{};
    ToolModifiers modifiers_;
    bool constrained_ = false;
};

}  // namespace wib
