// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"
#include "ui/canvas_tool_context.h"
#include "ui/transform_preview.h"

namespace wib {

// Dragging carries the selected pixels (the whole layer when nothing is
// selected) by whole pixels, shown as it goes; the release moves them through
// move.selection. A pasted block is the selection, so this places it.
class MoveTool : public Tool {
  public:
    explicit MoveTool(const CanvasToolContext& context);
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput& input) override;
    bool holdsPointer() const override { return dragging_; }
    ToolCursor cursor() const override { return ToolCursor::Move; }
    const char* optionsPanel() const override { return ""; }

  private:
    TransformSpec shiftTo(const ToolInput& input) const;

    CanvasToolContext context_;
    TransformPreview preview_;
    bool dragging_ = false;
    double startX_ = 0;
    double startY_ = 0;
};

}  // namespace wib
