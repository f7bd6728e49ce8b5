// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/layer_list_row.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>

#include "ui/layer_icons.h"

namespace wib {

namespace {

QToolButton* Toggle(const QIcon& icon, const QString& name, const QString& tip, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setIcon(icon);
    button->setToolTip(tip);
    return button;
}

}  // namespace

LayerListRow::LayerListRow(QWidget* parent) : QWidget(parent) {
    setObjectName("LayerRow");
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(3, 2, 3, 2);
    eye_ = Toggle(VisibilityIcon(), "cmdVisible", tr("Show or hide the layer"), this);
    lock_ = Toggle(LockIcon(), "cmdLock", tr("Lock the layer's pixels"), this);
    thumbnail_ = new QLabel(this);
    thumbnail_->setObjectName("picThumbnail");
    thumbnail_->setFixedSize(kThumbnailSize + 2, kThumbnailSize + 2);
    thumbnail_->setAlignment(Qt::AlignCenter);
    thumbnail_->setFrameShape(QFrame::Box);
    name_ = new QLabel(this);
    name_->setObjectName("lblName");
    name_->setTextFormat(Qt::PlainText);
    name_->setMinimumWidth(60);
    line->addWidget(eye_);
    line->addWidget(thumbnail_);
    line->addWidget(name_, 1);
    line->addWidget(lock_);
    connect(eye_, &QToolButton::toggled, this, &LayerListRow::visibilityToggled);
    connect(lock_, &QToolButton::toggled, this, &LayerListRow::lockToggled);
}

void LayerListRow::showLayer(const LayerProperties& properties, bool current) {
    name_->setText(QString::fromStdString(properties.name));
    {
        const QSignalBlocker quietEye(eye_);
        const QSignalBlocker quietLock(lock_);
        eye_->setChecked(properties.visible);
        lock_->setChecked(properties.lockPixels);
    }
    // The current layer stands out as a selected list entry does.
    current_ = current;
    QPalette text = name_->palette();
    text.setColor(QPalette::WindowText,
                  palette().color(current ? QPalette::HighlightedText : QPalette::Text));
    name_->setPalette(text);
    setProperty("current", current);
    update();
}

void LayerListRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(current_ ? QPalette::Highlight : QPalette::Base));
}

void LayerListRow::setThumbnail(const QImage& thumbnail) {
    thumbnail_->setPixmap(QPixmap::fromImage(thumbnail));
}

QString LayerListRow::name() const {
    return name_->text();
}

bool LayerListRow::onName(const QPoint& point) const {
    return name_->geometry().contains(point);
}

void LayerListRow::beginRename() {
    if (editor_ != nullptr) {
        return;
    }
    editor_ = new QLineEdit(name_->text(), this);
    editor_->setObjectName("txtRename");
    editor_->setGeometry(name_->geometry());
    editor_->installEventFilter(this);
    connect(editor_, &QLineEdit::editingFinished, this, [this] { finishRename(true); });
    editor_->show();
    editor_->selectAll();
    editor_->setFocus();
}

void LayerListRow::finishRename(bool commit) {
    if (editor_ == nullptr) {
        return;
    }
    // Let go of the editor first: hiding it loses focus, which finishes again.
    QLineEdit* editor = editor_;
    editor_ = nullptr;
    const QString text = editor->text().trimmed();
    editor->hide();
    editor->deleteLater();
    if (commit && !text.isEmpty() && text != name_->text()) {
        Q_EMIT renamed(text);
    }
}

bool LayerListRow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == editor_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        finishRename(false);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace wib
