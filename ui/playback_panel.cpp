// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/playback_panel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "ui/frame_rate.h"

namespace wib {

namespace {

struct Control {
    const char* name;
    const char* glyph;
    const char* command;
};

constexpr Control kControls[] = {
    {"cmdFirst", "|\u25C0", "anim.first_frame"},
    {"cmdBack", "\u25C0", "anim.previous_frame"},
    {"cmdPlay", "Play", "anim.play"},
    {"cmdStop", "Stop", "anim.stop"},
    {"cmdForward", "\u25B6", "anim.next_frame"},
    {"cmdLast", "\u25B6|", "anim.last_frame"},
};

}  // namespace

PlaybackPanel::PlaybackPanel(FrameStore& store, const CommandRegistry& commands,
                             std::function<void(const std::string&)> run, QWidget* parent)
    : QDockWidget(tr("Playback"), parent), store_(store) {
    setObjectName("PlaybackPanel");
    auto* body = new QWidget(this);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(4, 4, 4, 4);

    auto* buttons = new QHBoxLayout;
    for (const Control& control : kControls) {
        const CommandSpec* command = commands.find(control.command);
        if (command == nullptr) {
            continue;
        }
        auto* button = new QToolButton(body);
        button->setObjectName(control.name);
        button->setText(QString::fromUtf8(control.glyph));
        button->setToolTip(
            QString::fromStdString(command->caption).remove('&') +
            (command->shortcut.empty()
                 ? QString()
                 : QStringLiteral(" (%1)").arg(QString::fromStdString(command->shortcut))));
        button->setMinimumSize(32, 28);
        const std::string id = control.command;
        connect(button, &QToolButton::clicked, this, [run, id] { run(id); });
        buttons->addWidget(button);
        if (id == "anim.play") {
            play_ = button;
        } else {
            stepButtons_.push_back(button);
        }
    }
    rate_ = new Frame_Rate(store, body);
    buttons->addSpacing(12);
    buttons->addWidget(rate_);
    buttons->addStretch();
    column->addLayout(buttons);

    auto* position = new QHBoxLayout;
    slider_ = new QSlider(Qt::Horizontal, body);
    slider_->setObjectName("HScroll1");
    slider_->setPageStep(1);
    counter_ = new QLabel(body);
    counter_->setObjectName("lblFrame");
    counter_->setMinimumWidth(110);
    position->addWidget(slider_, 1);
    position->addWidget(counter_);
    column->addLayout(position);
    column->addStretch();
    setWidget(body);

    connect(slider_, &QSlider::valueChanged, this, [this](int frame) { store_.showFrame(frame); });
    if (parent != nullptr) {
        parent->installEventFilter(this);
    }
    store_.attachDisplay(this);
    animationChanged();
}

PlaybackPanel::~PlaybackPanel() {
    store_.attachDisplay(nullptr);
}

void PlaybackPanel::animationChanged() {
    const int frames = store_.FrameCount();
    const int shown = std::clamp(store_.CurrentFrame(), 0, std::max(frames - 1, 0));
    {
        const QSignalBlocker quiet(slider_);
        slider_->setRange(0, std::max(frames - 1, 0));
        slider_->setValue(shown);
    }
    slider_->setEnabled(frames > 1);
    for (QToolButton* button : stepButtons_) {
        button->setEnabled(frames > 0);
    }
    if (play_ != nullptr) {
        play_->setEnabled(frames > 1 && store_.PlayingFlag() == 0);
    }
    counter_->setText(QString::fromStdString(store_.FrameCounterText()));
    rate_->showRate(store_.rateField().text());
    const QString name = QString::fromStdString(store_.name());
    setWindowTitle(name.isEmpty() ? tr("Playback") : tr("Playback - %1").arg(name));
}

void PlaybackPanel::showControls() {
    show();
    raise();
}

void PlaybackPanel::startLoopSoon(std::function<void()> loop) {
    QTimer::singleShot(0, this, std::move(loop));
}

bool PlaybackPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Close) {
        store_.StopAnimation();
    }
    return QDockWidget::eventFilter(watched, event);
}

}  // namespace wib
