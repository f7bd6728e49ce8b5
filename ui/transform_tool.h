// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "paint/tool.h"
#include "ui/canvas_tool_context.h"
#include "ui/transform_preview.h"

namespace wib {

// Scales, turns, flips and moves the selected pixels (the whole layer when
// nothing is selected) with a live preview: a drag at a corner handle scales
// (Shift keeps the proportions), inside the outline moves, outside it turns
// (Shift in steps of 15 degrees). Enter applies, Escape cancels.
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
    bool key(ToolKey key) override;
    void leave() override;

    // The options: sampling, and flips of what is being transformed.
    void setSampling(Sampling sampling);
    void flipHorizontally();
    void flipVertically();
    bool transforming() const { return transforming_; }
    const TransformSpec& spec() const { return spec_; }

  private:
    enum class Grip { None, Move, Scale, Turn };
    void start();
    void cancel();
    void apply();

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
    Sampling sampling_ = Sampling::Bilinear;
};

}  // namespace wib
