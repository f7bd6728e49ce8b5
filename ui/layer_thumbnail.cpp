// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/layer_thumbnail.h"

#include <algorithm>
#include <cstdint>

namespace wib {

namespace {

int Over(int colour, int coverage, int ground) {
    return (colour * coverage + ground * (255 - coverage) + 127) / 255;
}

}  // namespace

QImage LayerThumbnail(const LayerPlanesView& planes, int width, int height, int size) {
    const auto covers = [width, height](const Plane* plane) {
        return plane == nullptr || (plane->ubX() >= width - 1 && plane->ubY() >= height - 1);
    };
    if (width <= 0 || height <= 0 || size <= 0 || !covers(planes.r) || !covers(planes.g) ||
        !covers(planes.b) || !covers(planes.a)) {
        return {};
    }
    const int longer = std::max(width, height);
    const int w = std::max(1, static_cast<int>(static_cast<long long>(width) * size / longer));
    const int h = std::max(1, static_cast<int>(static_cast<long long>(height) * size / longer));
    QImage image(w, h, QImage::Format_RGB32);
    for (int ty = 0; ty < h; ++ty) {
        // The centre of each thumbnail pixel picks its image pixel.
        const int y = static_cast<int>((2LL * ty + 1) * height / (2LL * h));
        const std::uint8_t* r = planes.r->row(y);
        const std::uint8_t* g = planes.g->row(y);
        const std::uint8_t* b = planes.b->row(y);
        const std::uint8_t* a = planes.a != nullptr ? planes.a->row(y) : nullptr;
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(ty));
        for (int tx = 0; tx < w; ++tx) {
            const int x = static_cast<int>((2LL * tx + 1) * width / (2LL * w));
            const int coverage = a != nullptr ? a[x] : 255;
            const bool dark = ((tx / kThumbnailSquare) + (ty / kThumbnailSquare)) % 2 == 1;
            const int ground = dark ? 204 : 255;
            out[tx] = qRgb(Over(r[x], coverage, ground), Over(g[x], coverage, ground),
                           Over(b[x], coverage, ground));
        }
    }
    return image;
}

}  // namespace wib
