// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/swatch_grid.h"

#include <QMouseEvent>
#include <QPainter>

namespace wib {

SwatchGrid::SwatchGrid(std::vector<QColor> colours, int columns, QWidget* parent)
    : QWidget(parent), colours_(std::move(colours)), columns_(std::max(columns, 1)) {
    setObjectName("SwatchGrid");
    setFixedSize(sizeHint());
}

QSize SwatchGrid::sizeHint() const {
    const int rows = (static_cast<int>(colours_.size()) + columns_ - 1) / columns_;
    return QSize(columns_ * kCell + 1, rows * kCell + 1);
}

void SwatchGrid::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Dark));
    for (std::size_t i = 0; i < colours_.size(); ++i) {
        const int x = static_cast<int>(i) % columns_ * kCell;
        const int y = static_cast<int>(i) / columns_ * kCell;
        painter.setBrush(colours_[i]);
        painter.drawRect(x, y, kCell, kCell);
    }
}

void SwatchGrid::mousePressEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    const std::size_t index = static_cast<std::size_t>(at.y() / kCell * columns_ + at.x() / kCell);
    if (at.x() < 0 || at.x() >= columns_ * kCell || index >= colours_.size()) {
        return;
    }
    if (event->button() == Qt::RightButton) {
        Q_EMIT alternateColourPicked(colours_[index]);
    } else {
        Q_EMIT colourPicked(colours_[index]);
    }
}

}  // namespace wib
