// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/brush_tool.h"

namespace wib {

// Paints with the current brush, but erases: the secondary colour on the
// bottom layer (or a flat picture), coverage taken away on any other layer.
class EraserTool : public BrushTool {
  public:
    using BrushTool::BrushTool;
    void press(const ToolInput& input) override;
    void release(const ToolInput& input) override;
};

}  // namespace wib
