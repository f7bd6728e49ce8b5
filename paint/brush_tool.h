// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"

namespace wib {

class PaintSession;

// Paints strokes: a press opens the stroke (one undo step), drags paint with
// the button that was pressed, the release ends the stroke.
class BrushTool : public Tool {
  public:
    explicit BrushTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput& input) override;
    bool holdsPointer() const override { return button_ != 0; }
    ToolCursor cursor() const override { return ToolCursor::BrushOutline; }
    const char* optionsPanel() const override { return "BrushOptions"; }

  protected:
    PaintSession& session() { return session_; }

  private:
    PaintSession& session_;
    int button_ = 0;  // the painting button held, 0 between strokes
};

}  // namespace wib
