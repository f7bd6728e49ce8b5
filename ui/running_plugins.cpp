// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/running_plugins.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "plugins/plugin_launcher.h"

namespace wib {

namespace {

QString StateText(const ChildPlugin& child) {
    switch (child.state) {
        case ChildPlugin::State::Running:
            return QObject::tr("running");
        case ChildPlugin::State::Ended:
            return QObject::tr("ended");
        case ChildPlugin::State::NotStarted:
            break;
    }
    return QObject::tr("not started");
}

QString ExitText(const ChildPlugin& child) {
    if (child.state != ChildPlugin::State::Ended) {
        return {};
    }
    return child.crashed ? QObject::tr("killed") : QString::number(child.exitCode);
}

}  // namespace

RunningPlugins::RunningPlugins(PluginLauncher& launcher, QWidget* parent)
    : QDialog(parent), launcher_(launcher), table_(new QTableWidget(this)) {
    setObjectName("RunningPlugins");
    setWindowTitle(tr("Running plug-ins"));
    table_->setObjectName("PluginList");
    table_->setColumnCount(4);
    table_->setHorizontalHeaderLabels(
        {tr("Name"), tr("Process id"), tr("State"), tr("Exit status")});
    table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    stop_ = buttons->addButton(tr("&Stop"), QDialogButtonBox::ActionRole);
    stop_->setObjectName("StopPlugin");
    connect(stop_, &QPushButton::clicked, this, &RunningPlugins::stopSelected);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(table_, &QTableWidget::itemSelectionChanged, this, &RunningPlugins::updateStop);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(table_);
    layout->addWidget(buttons);
    resize(520, 300);
    subscription_ = launcher_.changed.subscribe([this] { showChildren(); });
    showChildren();
}

void RunningPlugins::showChildren() {
    const int selected = table_->currentRow();
    const auto& children = launcher_.children();
    table_->setRowCount(static_cast<int>(children.size()));
    for (std::size_t i = 0; i < children.size(); ++i) {
        const ChildPlugin& child = children[i];
        const int row = static_cast<int>(i);
        const QString cells[] = {QString::fromStdString(child.name),
                                 child.pid != 0 ? QString::number(child.pid) : QString(),
                                 StateText(child), ExitText(child)};
        for (int column = 0; column < 4; ++column) {
            table_->setItem(row, column, new QTableWidgetItem(cells[column]));
        }
    }
    table_->setCurrentCell(selected, 0);
    updateStop();
}

void RunningPlugins::updateStop() {
    const int row = table_->currentRow();
    const auto& children = launcher_.children();
    stop_->setEnabled(row >= 0 && row < static_cast<int>(children.size()) &&
                      children[static_cast<std::size_t>(row)].state == ChildPlugin::State::Running);
}

void RunningPlugins::stopSelected() {
    const int row = table_->currentRow();
    if (row >= 0) {
        launcher_.stop(static_cast<std::size_t>(row));
    }
}

}  // namespace wib
