// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tool_cursors.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace wib {

namespace {

// Outlines beyond this size would make a cursor larger than screens allow.
constexpr double kLargestOutline = 250;
// Below this the circle is hidden under the cross.
constexpr double kSmallestOutline = 5;

QCursor BrushOutline(double diameter) {
    if (diameter < kSmallestOutline) {
        return QCursor(Qt::CrossCursor);
    }
    diameter = std::min(diameter, kLargestOutline);
    const int side = static_cast<int>(std::ceil(diameter)) + 4;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(side / 2.0, side / 2.0);
    // Light under dark, so the outline shows on any colour.
    painter.setPen(QPen(QColor(255, 255, 255, 200), 3));
    painter.drawEllipse(centre, diameter / 2, diameter / 2);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawEllipse(centre, diameter / 2, diameter / 2);
    painter.drawLine(centre - QPointF(2, 0), centre + QPointF(2, 0));
    painter.drawLine(centre - QPointF(0, 2), centre + QPointF(0, 2));
    painter.end();
    return QCursor(pixmap, side / 2, side / 2);
}

QRectF Box(const ToolOverlay& overlay, double scale) {
    const auto& a = overlay.points.front();
    const auto& b = overlay.points.back();
    return QRectF(QPointF(a[0] * scale, a[1] * scale), QPointF(b[0] * scale, b[1] * scale))
        .normalized();
}

}  // namespace

QCursor ToolPointer(ToolCursor cursor, double diameter) {
    switch (cursor) {
        case ToolCursor::BrushOutline:
            return BrushOutline(diameter);
        case ToolCursor::Picker:
            return QCursor(Qt::PointingHandCursor);
        case ToolCursor::CloneSource:
            return QCursor(Qt::UpArrowCursor);
        case ToolCursor::Fill:
            return QCursor(Qt::CrossCursor);
        case ToolCursor::Zoom:
            return QCursor(Qt::SizeAllCursor);
        case ToolCursor::Hand:
            return QCursor(Qt::OpenHandCursor);
        case ToolCursor::Move:
            return QCursor(Qt::SizeAllCursor);
        case ToolCursor::Text:
            return QCursor(Qt::IBeamCursor);
        case ToolCursor::Crosshair:
            break;
    }
    return QCursor(Qt::CrossCursor);
}

void DrawToolOverlay(QPainter& painter, const ToolOverlay& overlay, double scale) {
    if (overlay.kind == ToolOverlay::Kind::None || overlay.points.empty()) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    QPen dark(Qt::black, 1, Qt::DashLine);
    for (const QPen& pen : {QPen(Qt::white, 1), dark}) {
        painter.setPen(pen);
        switch (overlay.kind) {
            case ToolOverlay::Kind::Rectangle:
                painter.drawRect(Box(overlay, scale));
                break;
            case ToolOverlay::Kind::Ellipse:
                painter.drawEllipse(Box(overlay, scale));
                break;
            default: {
                QPolygonF line;
                for (const auto& [x, y] : overlay.points) {
                    line << QPointF(x * scale, y * scale);
                }
                overlay.closed ? painter.drawPolygon(line) : painter.drawPolyline(line);
            }
        }
    }
    painter.restore();
}

QRect ToolOverlayArea(const ToolOverlay& overlay, double scale) {
    if (overlay.points.empty()) {
        return {};
    }
    QRectF area;
    for (const auto& [x, y] : overlay.points) {
        area |= QRectF(x * scale, y * scale, 0.001, 0.001);
    }
    return area.toAlignedRect().adjusted(-3, -3, 3, 3);
}

}  // namespace wib
