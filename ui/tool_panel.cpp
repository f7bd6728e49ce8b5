// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tool_panel.h"

#include <QGridLayout>
#include <QToolButton>

#include "core/commands.h"

namespace wib {

namespace {

// The commands on the panel, in order, with their short labels.
constexpr std::pair<const char*, const char*> kTools[] = {
    {"file.new", "New"},         {"image.canvas_size", "Canvas"}, {"edit.undo", "Undo"},
    {"edit.redo", "Redo"},       {"view.zoom_in", "Zoom +"},      {"view.zoom_out", "Zoom -"},
    {"view.zoom_actual", "1:1"}, {"window.log", "Log"},
};

}  // namespace

Tool_Panel::Tool_Panel(const CommandRegistry& commands, std::function<void(const std::string&)> run,
                       QWidget* parent)
    : QDockWidget(tr("Tools"), parent) {
    setObjectName("Tool_Panel");
    auto* body = new QWidget(this);
    grid_ = new QGridLayout(body);
    grid_->setSpacing(2);
    grid_->setContentsMargins(4, 4, 4, 4);
    for (const auto& [id, label] : kTools) {
        const CommandSpec* command = commands.find(id);
        if (command == nullptr) {
            continue;
        }
        auto* button = new QToolButton(body);
        button->setObjectName(QStringLiteral("Tool_%1").arg(QString(id).replace('.', '_')));
        button->setText(label);
        button->setToolTip(
            QString::fromStdString(command->caption).remove('&') +
            (command->shortcut.empty()
                 ? QString()
                 : QStringLiteral(" (%1)").arg(QString::fromStdString(command->shortcut))));
        button->setMinimumSize(56, 28);
        connect(button, &QToolButton::clicked, this, [run, command] { run(command->id); });
        buttons_.push_back(button);
    }
    layoutButtons();
    setWidget(body);
}

void Tool_Panel::setSingleColumn(bool single) {
    single_ = single;
    layoutButtons();
}

void Tool_Panel::addBelow(QWidget* widget) {
    below_.push_back(widget);
    layoutButtons();
}

void Tool_Panel::layoutButtons() {
    const int columns = single_ ? 1 : 2;
    for (QWidget* widget : buttons_) {
        grid_->removeWidget(widget);
    }
    for (QWidget* widget : below_) {
        grid_->removeWidget(widget);
    }
    int row = 0;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        row = static_cast<int>(i) / columns;
        grid_->addWidget(buttons_[i], row, static_cast<int>(i) % columns);
    }
    for (QWidget* widget : below_) {
        grid_->addWidget(widget, ++row, 0, 1, columns);
    }
    for (int r = 0; r <= row + 1; ++r) {
        grid_->setRowStretch(r, 0);
    }
    grid_->setRowStretch(row + 1, 1);
}

}  // namespace wib
