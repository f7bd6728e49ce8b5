// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QPointer>

#include "core/observer_list.h"
#include "paint/tool.h"
#include "ui/canvas_tool_context.h"
#include "ui/text_command.h"

namespace wib {

// A click opens a text editor on the canvas at that point, in the font, size
// and anti-aliasing of the Tool options and the primary colour; the text
// stays editable until Enter, a click elsewhere on the canvas or another tool
// lays it into the picture through draw.text (one undo step). Esc drops it.
class TextTool : public Tool {
  public:
    explicit TextTool(const CanvasToolContext& context);
    ~TextTool() override;
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Text; }
    const char* optionsPanel() const override { return "TextOptions"; }
    bool pending() const override { return editor_ != nullptr; }
    void finish() override;
    void cancel() override;

    // The editor open now; null when none is.
    QLineEdit* editor() const { return editor_; }

  private:
    TextStyle style() const;
    // The editor follows the options, the colour and the zoom.
    void styleEditor();

    CanvasToolContext context_;
    QPointer<QLineEdit> editor_;
    int x_ = 0;
    int y_ = 0;
    Subscription options_;
};

}  // namespace wib
