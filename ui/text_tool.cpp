// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/text_tool.h"

#include <QLineEdit>
#include <QShortcut>
#include <cmath>

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/tool_context.h"
#include "ui/form1.h"

namespace wib {

TextTool::TextTool(const CanvasToolContext& context) : context_(context) {
    options_ = context_.session.workspace().events.paintOptionsChanged.subscribe(
        [this] { styleEditor(); });
}

TextStyle TextTool::style() const {
    const ToolOptions& options = context_.session.state().toolOptions;
    return {options.textFont, options.textSize, options.textAntialias};
}

TextTool::~TextTool() {
    delete editor_;
}

void TextTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    // A click beside the open editor commits its text.
    if (editor_ != nullptr) {
        finish();
        return;
    }
    const auto [x, y] = PixelUnder(context_.session.workspace(), input);
    x_ = static_cast<int>(x);
    y_ = static_cast<int>(y);
    editor_ = new QLineEdit(&context_.canvas);
    editor_->setObjectName("TextEditor");
    editor_->setFrame(false);
    editor_->setTextMargins(0, 0, 0, 0);
    editor_->setContentsMargins(0, 0, 0, 0);
    QObject::connect(editor_, &QLineEdit::returnPressed, editor_, [this] { finish(); });
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), editor_);
    escape->setContext(Qt::WidgetShortcut);
    QObject::connect(escape, &QShortcut::activated, editor_, [this] { cancel(); });
    QObject::connect(editor_, &QLineEdit::textChanged, editor_, [this] { styleEditor(); });
    styleEditor();
    editor_->show();
    editor_->setFocus();
}

void TextTool::styleEditor() {
    if (editor_ == nullptr) {
        return;
    }
    const Workspace& workspace = context_.session.workspace();
    const double zoom = workspace.view.scale();
    const TextStyle style = this->style();
    QFont font(QString::fromStdString(style.font));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(style.size * zoom))));
    font.setStyleStrategy(style.antialias ? QFont::PreferAntialias : QFont::NoAntialias);
    editor_->setFont(font);
    const PackedColour colour = workspace.colours.primary;
    editor_->setStyleSheet(
        QString("QLineEdit { background: rgba(255, 255, 255, 60); color: rgb(%1, %2, %3);"
                " border: 1px dashed gray; padding: 0px; }")
            .arg(colour.r)
            .arg(colour.g)
            .arg(colour.b));
    const QFontMetrics metrics(font);
    const int width = std::max(metrics.horizontalAdvance(editor_->text() + "MM"), 40);
    editor_->setGeometry(static_cast<int>(std::lround(x_ * zoom)) - 1,
                         static_cast<int>(std::lround(y_ * zoom)) - 1, width, metrics.height() + 2);
}

void TextTool::finish() {
    if (editor_ == nullptr) {
        return;
    }
    const std::string text = editor_->text().toStdString();
    editor_->deleteLater();
    editor_ = nullptr;
    context_.canvas.setFocus();
    if (text.empty()) {
        return;
    }
    const TextStyle style = this->style();
    context_.session.tools().runCommand(
        "draw.text",
        {{"x", static_cast<long long>(x_)},
         {"y", static_cast<long long>(y_)},
         {"text", text},
         {"font", style.font},
         {"size", static_cast<long long>(style.size)},
         {"colour", static_cast<long long>(context_.session.workspace().colours.primary.packed())},
         {"antialias", style.antialias ? -1LL : 0LL}});
}

void TextTool::cancel() {
    if (editor_ != nullptr) {
        editor_->deleteLater();
        editor_ = nullptr;
        context_.canvas.setFocus();
    }
}

}  // namespace wib
