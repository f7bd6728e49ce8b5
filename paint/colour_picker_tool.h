// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"

namespace wib {

class PaintSession;

// The eyedropper: a press takes the colour under the pointer as the primary
// colour, one pixel or the mean of a 3 x 3 or 5 x 5 square, from the current
// layer or the visible composite.
class ColourPickerTool : public Tool {
  public:
    explicit ColourPickerTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Picker; }
    const char* optionsPanel() const override { return "EyedropperOptions"; }

  private:
    PaintSession& session_;
};

}  // namespace wib
