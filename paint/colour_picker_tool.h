// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"

namespace wib {

class PaintSession;

// A press takes the colour of the image pixel under the pointer as the
// primary colour.
class ColourPickerTool : public Tool {
  public:
    explicit ColourPickerTool(PaintSession& session) : session_(session) {}
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Picker; }
    const char* optionsPanel() const override { return ""; }

  private:
    PaintSession& session_;
};

}  // namespace wib
