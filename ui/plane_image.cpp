// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/plane_image.h"

#include "core/document.h"
#include "core/layered_picture.h"
#include "pixel/checkerboard.h"

namespace wib {

void PlanesToImage(const Document& document, const QRect& area, QImage& image) {
    PlanesToImage(document.RBuffer, document.GBuffer, document.BBuffer,
                  area.intersected(QRect(0, 0, document.width, document.height)), image);
}

void PlanesToImage(const Plane& red, const Plane& green, const Plane& blue, const QRect& area,
                   QImage& image) {
    // The planes hold a spare column and row beyond the image.
    const QRect clipped = area.intersected(QRect(0, 0, red.ubX(), red.ubY()));
    if (image.size() != clipped.size() || image.format() != QImage::Format_RGB32) {
        image = QImage(clipped.size(), QImage::Format_RGB32);
    }
    for (int y = 0; y < clipped.height(); ++y) {
        const int sy = clipped.top() + y;
        const std::uint8_t* r = red.row(sy) + clipped.left();
        const std::uint8_t* g = green.row(sy) + clipped.left();
        const std::uint8_t* b = blue.row(sy) + clipped.left();
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < clipped.width(); ++x) {
            out[x] = qRgb(r[x], g[x], b[x]);
        }
    }
}

void LayersToImage(const LayerPixels& composite, const QRect& area, QImage& image) {
    if (image.size() != area.size() || image.format() != QImage::Format_RGB32) {
        image = QImage(area.size(), QImage::Format_RGB32);
    }
    for (int y = 0; y < area.height(); ++y) {
        const int sy = area.top() + y;
        const int sx = area.left();
        CheckerboardRow({composite.r.row(sy) + sx, composite.g.row(sy) + sx,
                         composite.b.row(sy) + sx, composite.a.row(sy) + sx},
                        sx, sy, area.width(), reinterpret_cast<std::uint32_t*>(image.scanLine(y)));
    }
}

}  // namespace wib
