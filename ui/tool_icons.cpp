// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tool_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>
#include <iterator>

namespace wib {

namespace {

constexpr int kSide = 24;

void DrawBrush(QPainter& p) {
    p.setPen(QPen(QColor(120, 80, 40), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(19, 4), QPointF(10, 13));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(30, 30, 30));
    p.drawEllipse(QPointF(7, 16), 4, 4);
    p.drawPolygon(QPolygonF({QPointF(3, 21), QPointF(5, 16), QPointF(9, 19)}));
}

void DrawEraser(QPainter& p) {
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(QColor(240, 150, 170));
    p.drawPolygon(QPolygonF({QPointF(4, 15), QPointF(13, 6), QPointF(20, 13), QPointF(11, 22)}));
    p.setBrush(QColor(90, 130, 220));
    p.drawPolygon(QPolygonF({QPointF(4, 15), QPointF(8, 11), QPointF(15, 18), QPointF(11, 22)}));
}

void DrawDropper(QPainter& p) {
    p.setPen(QPen(Qt::black, 2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(5, 19), QPointF(15, 9));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 40, 40));
    p.drawEllipse(QPointF(17, 7), 4, 4);
    p.setBrush(QColor(40, 120, 220));
    p.drawEllipse(QPointF(4, 20), 2, 2);
}

void DrawClone(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.5));
    p.drawEllipse(QPointF(12, 12), 7, 7);
    p.drawLine(QPointF(12, 2), QPointF(12, 22));
    p.drawLine(QPointF(2, 12), QPointF(22, 12));
}

void DrawBucket(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.5));
    p.setBrush(QColor(200, 200, 200));
    p.drawPolygon(QPolygonF({QPointF(4, 11), QPointF(11, 4), QPointF(19, 12), QPointF(12, 19)}));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 120, 220));
    p.drawEllipse(QPointF(20, 18), 2.5, 3.5);
}

void DrawGradient(QPainter& p) {
    QLinearGradient ramp(3, 0, 21, 0);
    ramp.setColorAt(0, Qt::black);
    ramp.setColorAt(1, Qt::white);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(ramp);
    p.drawRect(QRectF(3, 5, 18, 14));
}

void DrawMarquee(QPainter& p, bool ellipse) {
    p.setPen(QPen(Qt::black, 1.5, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    const QRectF box(4, 5, 16, 14);
    ellipse ? p.drawEllipse(box) : p.drawRect(box);
}

void DrawLasso(QPainter& p, bool polygon) {
    p.setPen(QPen(Qt::black, 1.5, polygon ? Qt::DashLine : Qt::SolidLine));
    p.setBrush(Qt::NoBrush);
    if (polygon) {
        p.drawPolygon(QPolygonF({QPointF(4, 18), QPointF(8, 4), QPointF(20, 8), QPointF(16, 20)}));
        return;
    }
    QPainterPath loop(QPointF(12, 16));
    loop.cubicTo(QPointF(0, 16), QPointF(2, 3), QPointF(12, 3));
    loop.cubicTo(QPointF(22, 3), QPointF(24, 16), QPointF(12, 16));
    loop.lineTo(QPointF(10, 22));
    p.drawPath(loop);
}

void DrawWand(QPainter& p) {
    p.setPen(QPen(Qt::black, 2.5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(4, 20), QPointF(14, 10));
    p.setPen(QPen(QColor(230, 170, 0), 1.5));
    const QPointF rays[] = {{0, -5}, {5, 0}, {4, -4}, {-4, -4}, {4, 4}};
    for (const QPointF& ray : rays) {
        p.drawLine(QPointF(17, 7), QPointF(17, 7) + ray);
    }
}

// Three swatches, two of one colour picked out by dashed outlines.
void DrawColourSelect(QPainter& p) {
    const QColor picked(40, 120, 220);
    const QRectF swatches[] = {{3, 3, 8, 8}, {13, 3, 8, 8}, {3, 13, 8, 8}, {13, 13, 8, 8}};
    for (std::size_t i = 0; i < std::size(swatches); ++i) {
        const bool same = i == 0 || i == 3;
        p.setPen(QPen(Qt::black, 1, same ? Qt::DashLine : Qt::SolidLine));
        p.setBrush(same ? picked : QColor(230, 170, 0));
        p.drawRect(swatches[i]);
    }
}

void DrawShape(QPainter& p, ToolId tool) {
    p.setPen(QPen(QColor(30, 30, 30), 2));
    p.setBrush(Qt::NoBrush);
    if (tool == ToolId::Line) {
        p.drawLine(QPointF(4, 20), QPointF(20, 4));
    } else if (tool == ToolId::Rectangle) {
        p.drawRect(QRectF(4, 6, 16, 12));
    } else {
        p.drawEllipse(QRectF(3, 6, 18, 12));
    }
}

void DrawZoom(QPainter& p) {
    p.setPen(QPen(Qt::black, 2));
    p.drawEllipse(QPointF(10, 10), 6, 6);
    p.setPen(QPen(Qt::black, 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(15, 15), QPointF(21, 21));
}

void DrawHand(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.2));
    p.setBrush(QColor(250, 220, 190));
    p.drawRoundedRect(QRectF(6, 11, 12, 10), 3, 3);
    for (int finger = 0; finger < 4; ++finger) {
        p.drawRoundedRect(QRectF(6 + finger * 3, 4 + (finger % 3), 3, 9), 1.5, 1.5);
    }
}

// Four arrows from the middle.
void DrawMove(QPainter& p) {
    p.setPen(QPen(Qt::black, 1.5));
    p.drawLine(QPointF(12, 3), QPointF(12, 21));
    p.drawLine(QPointF(3, 12), QPointF(21, 12));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    p.drawPolygon(QPolygonF({QPointF(12, 1), QPointF(9, 5), QPointF(15, 5)}));
    p.drawPolygon(QPolygonF({QPointF(12, 23), QPointF(9, 19), QPointF(15, 19)}));
    p.drawPolygon(QPolygonF({QPointF(1, 12), QPointF(5, 9), QPointF(5, 15)}));
    p.drawPolygon(QPolygonF({QPointF(23, 12), QPointF(19, 9), QPointF(19, 15)}));
}

// A turned box with square handles at its corners.
void DrawTransform(QPainter& p) {
    const QPolygonF box({QPointF(9, 3), QPointF(21, 9), QPointF(15, 21), QPointF(3, 15)});
    p.setPen(QPen(Qt::black, 1.2, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(box);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::white);
    for (const QPointF& corner : box) {
        p.drawRect(QRectF(corner - QPointF(2, 2), QSizeF(4, 4)));
    }
}

// Two crossed corner brackets.
void DrawCrop(QPainter& p) {
    p.setPen(QPen(Qt::black, 2));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({QPointF(7, 2), QPointF(7, 17), QPointF(22, 17)}));
    p.drawPolyline(QPolygonF({QPointF(2, 7), QPointF(17, 7), QPointF(17, 22)}));
}

void DrawText(QPainter& p) {
    QFont font = p.font();
    font.setPixelSize(20);
    font.setBold(true);
    p.setFont(font);
    p.setPen(Qt::black);
    p.drawText(QRectF(0, 0, kSide, kSide), Qt::AlignCenter, QStringLiteral("T"));
}

}  // namespace

QIcon ToolIcon(ToolId tool) {
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    switch (tool) {
        case ToolId::Brush:
            DrawBrush(p);
            break;
        case ToolId::Eraser:
            DrawEraser(p);
            break;
        case ToolId::ColourPicker:
            DrawDropper(p);
            break;
        case ToolId::CloneSource:
            DrawClone(p);
            break;
        case ToolId::Fill:
            DrawBucket(p);
            break;
        case ToolId::Gradient:
            DrawGradient(p);
            break;
        case ToolId::SelectRectangle:
        case ToolId::SelectEllipse:
            DrawMarquee(p, tool == ToolId::SelectEllipse);
            break;
        case ToolId::SelectLasso:
        case ToolId::SelectPolygon:
            DrawLasso(p, tool == ToolId::SelectPolygon);
            break;
        case ToolId::MagicWand:
            DrawWand(p);
            break;
        case ToolId::Line:
        case ToolId::Rectangle:
        case ToolId::Ellipse:
            DrawShape(p, tool);
            break;
        case ToolId::Zoom:
            DrawZoom(p);
            break;
        case ToolId::Hand:
            DrawHand(p);
            break;
        case ToolId::Move:
            DrawMove(p);
            break;
        case ToolId::Transform:
            DrawTransform(p);
            break;
        case ToolId::Crop:
            DrawCrop(p);
            break;
        case ToolId::Text:
            DrawText(p);
            break;
        case ToolId::SelectByColour:
            DrawColourSelect(p);
            break;
    }
    p.end();
    return QIcon(pixmap);
}

}  // namespace wib
