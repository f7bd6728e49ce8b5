// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/drag_tool.h"

namespace wib {

// A click floods the region under it with the primary colour, through
// edit.fill.
class FillTool : public Tool {
  public:
    explicit FillTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Fill; }
    const char* optionsPanel() const override { return "FillOptions"; }

  private:
    PaintSession& session_;
};

// A drag lays a gradient from the primary colour at the press to the
// secondary at the release, through draw.gradient.
class GradientTool : public DragTool {
  public:
    explicit GradientTool(PaintSession& session) : DragTool(session, ToolOverlay::Kind::Line) {}
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return "GradientOptions"; }

  protected:
    void apply(Point from, Point to, const ToolModifiers& modifiers) override;
};

// Line, rectangle and ellipse shapes from the press to the release, through
// draw.line, draw.rectangle and draw.ellipse.
class ShapeTool : public DragTool {
  public:
    ShapeTool(PaintSession& session, ToolOverlay::Kind shape, const char* command)
        : DragTool(session, shape), command_(command), line_(shape == ToolOverlay::Kind::Line) {}
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return line_ ? "BrushOptions" : "ShapeOptions"; }

  protected:
    void apply(Point from, Point to, const ToolModifiers& modifiers) override;

  private:
    const char* command_;
    bool line_;
};

}  // namespace wib
