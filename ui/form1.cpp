#include "ui/form1.h"

#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "core/document.h"
#include "ui/plane_image.h"

namespace wib {

Form1::Form1(const Document& document, QWidget* parent) : QWidget(parent), document_(document) {
    setObjectName("Form1");
    setAttribute(Qt::WA_OpaquePaintEvent);
    updateGeometryFromDocument();
}

double Form1::scale() const {
    return document_.Zoom / 100.0;
}

QSize Form1::sizeHint() const {
    return QSize(static_cast<int>(std::ceil(document_.width * scale())),
                 static_cast<int>(std::ceil(document_.height * scale())));
}

void Form1::updateGeometryFromDocument() {
    setFixedSize(sizeHint());
    update();
}

void Form1::refreshArea(int left, int top, int right, int bottom) {
    const double s = scale();
    update(QRectF(left * s, top * s, (right - left + 1) * s, (bottom - top + 1) * s)
               .toAlignedRect()
               .adjusted(-1, -1, 1, 1));
}

void Form1::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const double s = scale();
    const QRectF damaged = event->rect();
    const QRect source = QRectF(damaged.topLeft() / s, damaged.bottomRight() / s)
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1)
                             .intersected(QRect(0, 0, document_.width, document_.height));
    if (source.isEmpty()) {
        return;
    }
    PlanesToImage(document_, source, picture_);
    const QRectF target(source.left() * s, source.top() * s, source.width() * s,
                        source.height() * s);
    // Zoomed in, pixels stay crisp squares; zoomed out, they are averaged.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, s < 1.0);
    painter.drawImage(target, picture_);
}

}  // namespace wib
