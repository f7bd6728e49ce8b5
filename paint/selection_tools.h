// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "paint/drag_tool.h"

namespace wib {

// Rectangle and ellipse selection: the box dragged from corner to corner,
// snapped to pixel edges, through select.rectangle or select.ellipse. A click
// without a drag in replace mode selects nothing.
class SelectBoxTool : public DragTool {
  public:
    SelectBoxTool(PaintSession& session, bool ellipse)
        : DragTool(session, ellipse ? ToolOverlay::Kind::Ellipse : ToolOverlay::Kind::Rectangle),
          ellipse_(ellipse) {}
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return "SelectionOptions"; }

  protected:
    void apply(Point from, Point to, const ToolModifiers& modifiers) override;

  private:
    bool ellipse_;
};

// Lasso and polygon selection: the outline the pointer draws (lasso) or the
// corners it clicks (polygon, ended by a click on the first corner, Enter or
// another tool; Esc drops it), through select.polygon.
class SelectPolygonTool : public Tool {
  public:
    SelectPolygonTool(PaintSession& session, bool freehand)
        : session_(session), freehand_(freehand) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput& input) override;
    bool holdsPointer() const override { return !points_.empty(); }
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return "SelectionOptions"; }
    ToolOverlay overlay() const override;
    void finish() override;
    void cancel() override { points_.clear(); }

  private:
    void add(const ToolInput& input);

    PaintSession& session_;
    bool freehand_;
    int mode_ = 0;
    std::vector<std::array<double, 2>> points_;
    std::array<double, 2> pointer_{};
};

// The magic wand: a click selects the pixels like the one under it, through
// select.wand. Selecting by colour is the wand over the whole image: every
// pixel of the colour, joined to the clicked one or not.
class MagicWandTool : public Tool {
  public:
    explicit MagicWandTool(PaintSession& session, bool byColour = false)
        : session_(session), byColour_(byColour) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override {
        return byColour_ ? "ColourSelectOptions" : "WandOptions";
    }

  private:
    PaintSession& session_;
    bool byColour_;
};

}  // namespace wib
