// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/layer_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <functional>

namespace wib {

namespace {

constexpr int kSide = 16;

QPixmap Drawn(const QColor& ink, const std::function<void(QPainter&)>& draw) {
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.4));
    painter.setBrush(Qt::NoBrush);
    draw(painter);
    return pixmap;
}

QIcon TwoStates(const std::function<void(QPainter&)>& draw) {
    QIcon icon;
    icon.addPixmap(Drawn(QColor(30, 30, 30), draw), QIcon::Normal, QIcon::On);
    icon.addPixmap(Drawn(QColor(30, 30, 30, 60), draw), QIcon::Normal, QIcon::Off);
    return icon;
}

}  // namespace

QIcon VisibilityIcon() {
    return TwoStates([](QPainter& painter) {
        QPainterPath lids;
        lids.moveTo(1.5, 8);
        lids.quadTo(8, 1, 14.5, 8);
        lids.quadTo(8, 15, 1.5, 8);
        painter.drawPath(lids);
        painter.setBrush(painter.pen().color());
        painter.drawEllipse(QPointF(8, 8), 2.3, 2.3);
    });
}

QIcon LockIcon() {
    return TwoStates([](QPainter& painter) {
        painter.drawArc(QRectF(4.5, 1.5, 7, 9), 0, 180 * 16);
        painter.drawLine(QPointF(4.5, 6), QPointF(4.5, 7.5));
        painter.drawLine(QPointF(11.5, 6), QPointF(11.5, 7.5));
        painter.setBrush(painter.pen().color());
        painter.drawRect(QRectF(3, 7.5, 10, 7));
    });
}

}  // namespace wib
