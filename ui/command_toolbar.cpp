// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/command_toolbar.h"

#include <QAction>
#include <QToolBar>

#include "core/commands.h"

namespace wib {

namespace {

// The commands on the bar, in order, with their short labels.
constexpr std::pair<const char*, const char*> kCommands[] = {
    {"file.new", "New"},         {"image.canvas_size", "Canvas"}, {"edit.undo", "Undo"},
    {"edit.redo", "Redo"},       {"view.zoom_in", "Zoom +"},      {"view.zoom_out", "Zoom -"},
    {"view.zoom_actual", "1:1"}, {"window.log", "Log"},
};

}  // namespace

QToolBar* MakeCommandToolBar(const CommandRegistry& commands,
                             std::function<void(const std::string&)> run, QWidget* parent) {
    auto* bar = new QToolBar(QObject::tr("Commands"), parent);
    bar->setObjectName("CommandToolBar");
    for (const auto& [id, label] : kCommands) {
        const CommandSpec* command = commands.find(id);
        if (command == nullptr) {
            continue;
        }
        QAction* action = bar->addAction(label);
        action->setObjectName(QStringLiteral("Tool_%1").arg(QString(id).replace('.', '_')));
        action->setToolTip(
            QString::fromStdString(command->caption).remove('&') +
            (command->shortcut.empty()
                 ? QString()
                 : QStringLiteral(" (%1)").arg(QString::fromStdString(command->shortcut))));
        QObject::connect(action, &QAction::triggered, bar, [run, id = command->id] { run(id); });
    }
    return bar;
}

}  // namespace wib
