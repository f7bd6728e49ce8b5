// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/curve_editor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "pixel/colour_adjust.h"

namespace wib {

namespace {

constexpr std::array<int, 3> kInputs{64, 128, 192};
constexpr int kMargin = 8;
constexpr double kGrab = 12;  // how near, in screen pixels, a press takes a point

}  // namespace

CurveEditor::CurveEditor(QWidget* parent) : QWidget(parent) {
    setObjectName("Curve");
    setMinimumSize(200, 200);
}

QSize CurveEditor::sizeHint() const {
    return {280, 280};
}

void CurveEditor::setOutputs(const std::array<int, 3>& outputs) {
    outputs_ = outputs;
    update();
}

QPointF CurveEditor::place(int input, int output) const {
    const double side = width() - 2 * kMargin;
    const double tall = height() - 2 * kMargin;
    return {kMargin + input * side / 255.0, kMargin + (255 - output) * tall / 255.0};
}

int CurveEditor::outputAt(double y) const {
    const double tall = height() - 2 * kMargin;
    return std::clamp(static_cast<int>(std::lround(255 - (y - kMargin) * 255 / tall)), 0, 255);
}

void CurveEditor::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    painter.setPen(QPen(palette().mid().color(), 1, Qt::DotLine));
    for (int v = 0; v <= 256; v += 64) {
        const int at = std::min(v, 255);
        painter.drawLine(place(at, 0), place(at, 255));
        painter.drawLine(place(0, at), place(255, at));
    }
    // Drawn from the table the filter applies, so the picture is the curve.
    const ChannelLut lut = CurvesLut(outputs_[0], outputs_[1], outputs_[2]);
    QPainterPath curve(place(0, lut[0]));
    for (int v = 1; v < 256; ++v) {
        curve.lineTo(place(v, lut[static_cast<std::size_t>(v)]));
    }
    painter.setPen(QPen(palette().text().color(), 2));
    painter.drawPath(curve);
    painter.setBrush(palette().highlight());
    for (std::size_t i = 0; i < 3; ++i) {
        painter.drawEllipse(place(kInputs[i], outputs_[i]), 5, 5);
    }
}

void CurveEditor::mousePressEvent(QMouseEvent* event) {
    dragged_ = -1;
    double nearest = kGrab;
    for (std::size_t i = 0; i < 3; ++i) {
        const double gap = std::abs(event->position().x() - place(kInputs[i], 0).x());
        if (gap < nearest) {
            nearest = gap;
            dragged_ = static_cast<int>(i);
        }
    }
    mouseMoveEvent(event);
}

void CurveEditor::mouseMoveEvent(QMouseEvent* event) {
    if (dragged_ < 0) {
        return;
    }
    const int output = outputAt(event->position().y());
    int& shown = outputs_[static_cast<std::size_t>(dragged_)];
    if (output != shown) {
        shown = output;
        update();
        Q_EMIT outputsChanged();
    }
}

void CurveEditor::mouseReleaseEvent(QMouseEvent*) {
    dragged_ = -1;
}

}  // namespace wib
