// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frame_thumbnail.h"

#include <algorithm>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

namespace {

ThumbnailSource SourceOf(const Plane& r, const Plane& g, const Plane& b, const Plane* a) {
    return {r.data(),   g.data(), b.data(), a != nullptr && !a->empty() ? a->data() : nullptr,
            r.stride(), r.ubX(),  r.ubY()};
}

}  // namespace

QImage Thumbnail(const ThumbnailSource& source, int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    if (source.width <= 0 || source.height <= 0) {
        image.fill(Qt::gray);
        return image;
    }
    // The whole picture fits, its shape kept, centred.
    const double scale = std::min(static_cast<double>(width) / source.width,
                                  static_cast<double>(height) / source.height);
    const int shownW = std::max(1, static_cast<int>(source.width * scale));
    const int shownH = std::max(1, static_cast<int>(source.height * scale));
    const int left = (width - shownW) / 2;
    const int top = (height - shownH) / 2;
    // The margins the picture's shape leaves are clear: the cell shows there.
    image.fill(Qt::transparent);
    for (int y = 0; y < shownH; ++y) {
        const auto sy =
            static_cast<std::size_t>(std::min(source.height - 1, static_cast<int>(y / scale)));
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(top + y));
        for (int x = 0; x < shownW; ++x) {
            const auto sx =
                static_cast<std::size_t>(std::min(source.width - 1, static_cast<int>(x / scale)));
            const std::size_t i = sy * source.stride + sx;
            const int alpha = source.a != nullptr ? source.a[i] : 255;
            const int check = ((x / 4 + y / 4) % 2) != 0 ? 255 : 204;
            auto over = [alpha, check](int v) { return (v * alpha + check * (255 - alpha)) / 255; };
            line[left + x] = qRgb(over(source.r[i]), over(source.g[i]), over(source.b[i]));
        }
    }
    return image;
}

QImage LayerFrameThumbnail(const Workspace& workspace, const FrameStore& store, int layer,
                           int frame, int width, int height) {
    const int shown = std::min(store.CurrentFrame(), store.FrameCount() - 1);
    if (frame == shown || store.FrameCount() == 0) {
        const LayerPlanesView view = LayerPlanesOf(workspace, layer);
        return Thumbnail(SourceOf(*view.r, *view.g, *view.b, view.a), width, height);
    }
    const auto& frames = workspace.layers.layers[static_cast<std::size_t>(layer)].frames;
    const LayerCell& cell = frames[static_cast<std::size_t>(frame)];
    if (cell) {
        return Thumbnail(SourceOf(cell->r, cell->g, cell->b, &cell->a), width, height);
    }
    // One opaque layer: the frame store alone holds the frame.
    const Document& doc = workspace.document;
    return Thumbnail(
        {store.AnimR().frame(frame), store.AnimG().frame(frame), store.AnimB().frame(frame),
         nullptr, doc.RBuffer.stride(), doc.width, doc.height},
        width, height);
}

}  // namespace wib
