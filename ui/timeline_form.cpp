// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/timeline_form.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

TimelineForm::TimelineForm(FrameStore& store, const CommandRegistry& commands, QWidget* parent)
    : QDockWidget(tr("Timeline"), parent), store_(store) {
    setObjectName("TimelineForm");
    Workspace& workspace = store.workspace();
    run_ = [&commands, &workspace](const std::string& id,
                                   const std::map<std::string, ParamValue>& values) {
        return commands.run(workspace, id, values).status == CommandOutcome::Status::Done;
    };
    auto* body = new QWidget(this);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(2, 2, 2, 2);
    auto* modes = new QHBoxLayout();
    loop_ = new QCheckBox(tr("Loop"), body);
    pingPong_ = new QCheckBox(tr("Ping-pong"), body);
    modes->addWidget(loop_);
    modes->addWidget(pingPong_);
    onion_ = new QToolButton(body);
    onion_->setText(tr("Onion skin"));
    onion_->setToolTip(tr("Onion skin (Alt+O)"));
    onion_->setCheckable(true);
    modes->addWidget(onion_);
    modes->addStretch();
    column->addLayout(modes);
    grid_ = new TimelineGrid(store, run_, body);
    auto* scroll = new QScrollArea(body);
    scroll->setWidget(grid_);
    scroll->setWidgetResizable(false);
    column->addWidget(scroll);
    setWidget(body);
    grid_->resize(grid_->sizeHint());

    connect(loop_, &QCheckBox::toggled, this, [this] { setModes(); });
    connect(pingPong_, &QCheckBox::toggled, this, [this] { setModes(); });
    connect(onion_, &QToolButton::clicked, this, [this] {
        run_("view.onion_toggle", {});
        showModes();
    });
    changed_ = store.changed.subscribe([this] { showModes(); });
    onionChanged_ = workspace.events.onionChanged.subscribe([this] { showModes(); });
    showModes();
}

void TimelineForm::showModes() {
    const QSignalBlocker blockLoop(loop_);
    const QSignalBlocker blockPingPong(pingPong_);
    loop_->setChecked(store_.playRange().loop);
    pingPong_->setChecked(store_.playRange().pingPong);
    onion_->setChecked(store_.workspace().view.onion.shown);
}

void TimelineForm::setModes() {
    // Commands take true as -1.
    run_("anim.play_mode", {{"loop", ParamValue{loop_->isChecked() ? -1LL : 0LL}},
                            {"ping_pong", ParamValue{pingPong_->isChecked() ? -1LL : 0LL}}});
    showModes();
}

}  // namespace wib
