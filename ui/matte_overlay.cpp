// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/matte_overlay.h"

#include "core/document.h"

namespace wib {

namespace {

constexpr int kStrongest = 128;  // the veil's opacity over unselected pixels

}  // namespace

QImage MatteOverlay(const Document& document, const QRect& source) {
    QImage veil(source.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < source.height(); ++y) {
        const std::uint8_t* matte = document.ABuffer.row(source.top() + y) + source.left();
        auto* out = reinterpret_cast<QRgb*>(veil.scanLine(y));
        for (int x = 0; x < source.width(); ++x) {
            const int alpha = (255 - matte[x]) * kStrongest / 255;
            out[x] = qRgba(alpha, 0, 0, alpha);  // premultiplied red
        }
    }
    return veil;
}

}  // namespace wib
