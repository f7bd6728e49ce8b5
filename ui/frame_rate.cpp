// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frame_rate.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "anim/frame_store.h"

namespace wib {

Frame_Rate::Frame_Rate(FrameStore& store, QWidget* parent) : QWidget(parent) {
    setObjectName("Frame_Rate");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    field_ = new QLineEdit(this);
    field_->setObjectName("txtFrameRate");
    field_->setMaximumWidth(56);
    field_->setToolTip(tr("Frames per second during playback"));
    auto* label = new QLabel(tr("&Rate"), this);
    label->setBuddy(field_);
    row->addWidget(label);
    row->addWidget(field_);
    row->addWidget(new QLabel(tr("fps"), this));
    showRate(store.rateField().text());
    connect(field_, &QLineEdit::textChanged, this,
            [&store](const QString& text) { store.rateField().setText(text.toStdString()); });
}

void Frame_Rate::showRate(const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (field_->text() != shown) {
        const QSignalBlocker quiet(field_);
        field_->setText(shown);
    }
}

}  // namespace wib
