// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"

namespace wib {

class PaintSession;

// A click zooms in one step; Alt or the right button zooms out.
class ZoomTool : public Tool {
  public:
    explicit ZoomTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Zoom; }
    const char* optionsPanel() const override { return ""; }

  private:
    PaintSession& session_;
};

// Dragging scrolls the view; the canvas does the scrolling, as it does for
// Space + drag with any tool.
class HandTool : public Tool {
  public:
    void press(const ToolInput&) override {}
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Hand; }
    const char* optionsPanel() const override { return ""; }
};

}  // namespace wib
