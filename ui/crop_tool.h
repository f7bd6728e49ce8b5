// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

#include "paint/tool.h"
#include "ui/canvas_tool_context.h"

namespace wib {

// A drag marks the rectangle to keep (what lies outside is shaded); Enter
// crops the picture to it through image.crop, Esc forgets it.
class CropTool : public Tool {
  public:
    explicit CropTool(const CanvasToolContext& context) : context_(context) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput&) override { dragging_ = false; }
    bool holdsPointer() const override { return dragging_; }
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return ""; }
    bool pending() const override { return !marked_.isEmpty(); }
    void finish() override;
    void cancel() override;

    // The rectangle marked, in image pixels; empty for none.
    const QRect& marked() const { return marked_; }

  private:
    QPoint imagePoint(const ToolInput& input) const;
    void show();

    CanvasToolContext context_;
    bool dragging_ = false;
    QPoint start_;
    QRect marked_;
};

}  // namespace wib
