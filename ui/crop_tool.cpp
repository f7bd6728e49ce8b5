// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/crop_tool.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "core/commands.h"
#include "core/workspace.h"
#include "ui/form1.h"

namespace wib {

QPoint CropTool::imagePoint(const ToolInput& input) const {
    const Document& doc = context_.workspace.document;
    const double zoom = context_.workspace.view.scale();
    // Corners fall between pixels, so the far edge may be the image's width.
    return {std::clamp(static_cast<int>(std::lround(input.x / zoom)), 0, doc.width),
            std::clamp(static_cast<int>(std::lround(input.y / zoom)), 0, doc.height)};
}

void CropTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    dragging_ = true;
    start_ = imagePoint(input);
    marked_ = QRect();
    context_.canvas.clearPreview();
}

void CropTool::drag(const ToolInput& input) {
    if (!dragging_) {
        return;
    }
    const QPoint end = imagePoint(input);
    marked_ = QRect(QPoint(std::min(start_.x(), end.x()), std::min(start_.y(), end.y())),
                    QSize(std::abs(end.x() - start_.x()), std::abs(end.y() - start_.y())));
    show();
}

void CropTool::show() {
    const Document& doc = context_.workspace.document;
    const QRect whole(0, 0, doc.width, doc.height);
    QImage shade(whole.size(), QImage::Format_ARGB32_Premultiplied);
    shade.fill(QColor(0, 0, 0, 110));
    QPainter painter(&shade);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(marked_, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(Qt::white, 0, Qt::DashLine));
    painter.drawRect(marked_.adjusted(0, 0, -1, -1));
    painter.end();
    context_.canvas.setPreview(shade, whole);
}

bool CropTool::key(ToolKey key) {
    if (marked_.isEmpty()) {
        return false;
    }
    const QRect rect = marked_;
    leave();
    if (key == ToolKey::Enter) {
        context_.commands.run(context_.workspace, "image.crop",
                              {{"x", static_cast<long long>(rect.x())},
                               {"y", static_cast<long long>(rect.y())},
                               {"width", static_cast<long long>(rect.width())},
                               {"height", static_cast<long long>(rect.height())}});
    }
    return true;
}

void CropTool::leave() {
    dragging_ = false;
    marked_ = QRect();
    context_.canvas.clearPreview();
}

}  // namespace wib
