// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/crop_tool.h"

#include <QImage>
#include <QPainter>
#include <algorithm>

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/tool_context.h"
#include "ui/form1.h"

namespace wib {

QPoint CropTool::imagePoint(const ToolInput& input) const {
    const Document& doc = context_.session.workspace().document;
    // Corners fall between pixels, so the far edge may be the image's width.
    const auto [x, y] = PixelCorner(context_.session.workspace(), input);
    return {static_cast<int>(std::clamp<long long>(x, 0, doc.width)),
            static_cast<int>(std::clamp<long long>(y, 0, doc.height))};
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
    const Document& doc = context_.session.workspace().document;
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

void CropTool::finish() {
    if (marked_.isEmpty()) {
        return;
    }
    const QRect rect = marked_;
    cancel();
    context_.session.tools().runCommand("image.crop",
                                        {{"x", static_cast<long long>(rect.x())},
                                         {"y", static_cast<long long>(rect.y())},
                                         {"width", static_cast<long long>(rect.width())},
                                         {"height", static_cast<long long>(rect.height())}});
}

void CropTool::cancel() {
    dragging_ = false;
    marked_ = QRect();
    context_.canvas.clearPreview();
}

}  // namespace wib
