// SPDX-License-Identifier: GPL-3.0-or-later
#include "clock_face.h"

#include <QPainter>

#include <algorithm>

namespace {

// Draws one hand from the centre of a face 200 units across.
void Hand(QPainter& painter, double degrees, double length, double width, const QColor& colour) {
    painter.save();
    painter.rotate(degrees);
    painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, 8), QPointF(0, -length));
    painter.restore();
}

}  // namespace

ClockFace::ClockFace(QWidget* parent) : QWidget(parent), time_(QTime::currentTime()) {
    setMinimumSize(120, 120);
}

void ClockFace::setTime(const QTime& time) {
    time_ = time;
    update();
}

void ClockFace::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const double side = std::min(width(), height());
    painter.scale(side / 200.0, side / 200.0);

    painter.setPen(QPen(palette().color(QPalette::WindowText), 3));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(QPointF(0, 0), 96, 96);
    for (int mark = 0; mark < 60; ++mark) {
        const bool hour = mark % 5 == 0;
        painter.setPen(QPen(palette().color(QPalette::WindowText), hour ? 3 : 1));
        painter.drawLine(QPointF(0, hour ? -80 : -86), QPointF(0, -92));
        painter.rotate(6.0);
    }

    const QColor text = palette().color(QPalette::WindowText);
    Hand(painter, 30.0 * (time_.hour() % 12) + time_.minute() / 2.0, 50, 6, text);
    Hand(painter, 6.0 * time_.minute() + time_.second() / 10.0, 72, 4, text);
    Hand(painter, 6.0 * time_.second(), 84, 1.5, QColor(200, 30, 30));
}
