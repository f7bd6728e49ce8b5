#include "ui/canvas_widget.h"

#include <QPaintEvent>
#include <QPainter>

#include "core/document.h"
#include "ui/plane_image.h"

namespace wib {

CanvasWidget::CanvasWidget(const Document& document, QWidget* parent)
    : QWidget(parent), document_(document) {
    setObjectName("Form1");
    setAttribute(Qt::WA_OpaquePaintEvent);
    updateGeometryFromDocument();
}

QSize CanvasWidget::sizeHint() const {
    const double scale = document_.Zoom / 100.0;
    return QSize(static_cast<int>(document_.width * scale),
                 static_cast<int>(document_.height * scale));
}

void CanvasWidget::updateGeometryFromDocument() {
    setFixedSize(sizeHint());
    update();
}

void CanvasWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const double scale = document_.Zoom / 100.0;
    // Only the image pixels under the damaged part of the window are converted.
    const QRectF damaged = event->rect();
    const QRect source = QRectF(damaged.topLeft() / scale, damaged.bottomRight() / scale)
                             .toAlignedRect()
                             .intersected(QRect(0, 0, document_.width, document_.height));
    if (source.isEmpty()) {
        return;
    }
    const QImage image = PlanesToImage(document_, source);
    const QRectF target(source.left() * scale, source.top() * scale, source.width() * scale,
                        source.height() * scale);
    painter.drawImage(target, image);
}

}  // namespace wib
