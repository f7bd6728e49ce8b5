// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/plane_image.h"

#include "core/document.h"

namespace wib {

void PlanesToImage(const Document& document, const QRect& area, QImage& image) {
    const QRect clipped = area.intersected(QRect(0, 0, document.width, document.height));
    if (image.size() != clipped.size() || image.format() != QImage::Format_RGB32) {
        image = QImage(clipped.size(), QImage::Format_RGB32);
    }
    for (int y = 0; y < clipped.height(); ++y) {
        const int sy = clipped.top() + y;
        const std::uint8_t* r = document.RBuffer.row(sy) + clipped.left();
        const std::uint8_t* g = document.GBuffer.row(sy) + clipped.left();
        const std::uint8_t* b = document.BBuffer.row(sy) + clipped.left();
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < clipped.width(); ++x) {
            out[x] = qRgb(r[x], g[x], b[x]);
        }
    }
}

}  // namespace wib
