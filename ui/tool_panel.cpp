// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tool_panel.h"

#include <QGridLayout>
#include <QToolButton>

#include "paint/tool_catalog.h"
#include "ui/tool_icons.h"

namespace wib {

Tool_Panel::Tool_Panel(std::function<void(const std::string&)> choose, QWidget* parent)
    : QDockWidget(tr("Tools"), parent) {
    setObjectName("Tool_Panel");
    auto* body = new QWidget(this);
    grid_ = new QGridLayout(body);
    grid_->setSpacing(2);
    grid_->setContentsMargins(4, 4, 4, 4);
    for (const ToolEntry& entry : ToolCatalog()) {
        auto* button = new QToolButton(body);
        button->setObjectName(
            QStringLiteral("Tool_%1").arg(QString(entry.command).replace('.', '_')));
        button->setIcon(ToolIcon(entry.id));
        button->setIconSize(QSize(24, 24));
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setToolTip(QStringLiteral("%1 (%2)")
                               .arg(QString(entry.caption).remove('&'))
                               .arg(QString(entry.shortcut)));
        connect(button, &QToolButton::clicked, this, [this, choose, entry] {
            choose(entry.command);
            // The command may be refused; the buttons show what is active.
            showActiveTool(entry.id);
        });
        buttons_.emplace_back(entry.id, button);
    }
    layoutButtons();
    setWidget(body);
}

QToolButton* Tool_Panel::button(ToolId tool) const {
    for (const auto& [id, button] : buttons_) {
        if (id == tool) {
            return button;
        }
    }
    return nullptr;
}

void Tool_Panel::showActiveTool(ToolId tool) {
    for (const auto& [id, button] : buttons_) {
        button->setChecked(id == tool);
    }
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
    for (const auto& entry : buttons_) {
        grid_->removeWidget(entry.second);
    }
    for (QWidget* widget : below_) {
        grid_->removeWidget(widget);
    }
    int row = 0;
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        row = static_cast<int>(i) / columns;
        grid_->addWidget(buttons_[i].second, row, static_cast<int>(i) % columns);
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
