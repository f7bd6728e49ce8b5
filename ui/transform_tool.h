// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/observer_list.h"
#include "paint/tool.h"
#include "ui/canvas_tool_context.h"
#include "ui/transform_preview.h"

namespace wib {

// Scales, turns, flips and moves the selected pixels (the whole layer when
// nothing is selected) with a live preview: a drag at a corner handle scales
// (Shift keeps the proportions), inside the outline moves, outside it turns
// (Shift in steps of 15 degrees). Enter or another tool applies it through
// transform.apply, Esc cancels. The sampling is the Tool options' one.
class TransformTool : public Tool {
  public:
    explicit TransformTool(const CanvasToolContext& context);
    void press(const ToolInput& input) override;
    void drag(const ToolInput& input) override;
    void release(const ToolInput& input) override;
    bool holdsPointer() const override { return grip_ != Grip::None; }
    ToolCursor cursor() const override { return ToolCursor::Crosshair; }
    const char* optionsPanel() const override { return "TransformOptions"; }
    bool pending() const override { return transforming_; }
    void finish() override;
    void cancel() override;

    // Flips what is being transformed (starting a transform if none is).
    void flipHorizontally();
    void flipVertically();
    bool transforming() const { return transforming_; }
    const TransformSpec& spec() const { return spec_; }

  private:
    enum class Grip { None, Move, Scale, Turn };
    void start();
    // Shows the transform with the sampling the options hold now.
    void showPreview();

    CanvasToolContext context_;
    TransformPreview preview_;
    bool transforming_ = false;
    AlphaBounds box_;
    TransformSpec spec_;
    TransformSpec pressed_;  // the transform when the drag began
    Grip grip_ = Grip::None;
    bool shift_ = false;
    double pressX_ = 0;
    double pressY_ = 0;
    Subscription options_;
};

}  // namespace wib
