// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QPointer>

#include "paint/tool.h"
#include "ui/canvas_tool_context.h"
#include "ui/text_command.h"

namespace wib {

// A click opens a text editor on the canvas at that point, in the chosen
// font, size and the primary colour; the text stays editable until Enter or a
// click elsewhere on the canvas lays it into the picture (one undo step).
// Escape drops it.
class TextTool : public Tool {
  public:
    explicit TextTool(const CanvasToolContext& context) : context_(context) {}
    ~TextTool() override;
    void press(const ToolInput& input) override;
    void drag(const ToolInput&) override {}
    void release(const ToolInput&) override {}
    ToolCursor cursor() const override { return ToolCursor::Text; }
    const char* optionsPanel() const override { return "TextOptions"; }
    bool pending() const override { return editor_ != nullptr; }
    bool key(ToolKey key) override;
    void leave() override;

    // The options; an open editor follows them.
    const TextStyle& style() const { return style_; }
    void setStyle(const TextStyle& style);
    // The editor open now; null when none is.
    QLineEdit* editor() const { return editor_; }

    void commit();
    void cancel();

  private:
    void styleEditor();

    CanvasToolContext context_;
    TextStyle style_;
    QPointer<QLineEdit> editor_;
    int x_ = 0;
    int y_ = 0;
};

}  // namespace wib
