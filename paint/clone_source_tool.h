// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"

namespace wib {

class PaintSession;

// A press sets the point Clone copies from and Pattern offset tiles from.
class CloneSourceTool : public Tool {
  public:
    explicit CloneSourceTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::CloneSource; }
    // "Aligned clone" lives on the brush panel.
    const char* optionsPanel() const override { return "BrushOptions"; }

  private:
    PaintSession& session_;
};

}  // namespace wib
