// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/transform_preview.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "ui/form1.h"
#include "ui/plane_image.h"

namespace wib {

AlphaBounds TransformPreview::box() const {
    const Document& doc = workspace_.document;
    if (doc.AlphaBitsFlag == 255) {
        return SelectionBounds(doc);
    }
    return {0, 0, doc.width - 1, doc.height - 1};
}

void TransformPreview::show(const TransformSpec& spec) {
    const Document& doc = workspace_.document;
    const AlphaBounds from = box();
    if (from.empty()) {
        clear();
        return;
    }
    Plane r = doc.RBuffer;
    Plane g = doc.GBuffer;
    Plane b = doc.BBuffer;
    const bool bottom = CurrentLayer(workspace_) == 0;
    Plane coverage = bottom                 ? Plane()
                     : doc.Coverage.empty() ? Plane(doc.width, doc.height, 255)
                                            : doc.Coverage;
    Plane matte = doc.AlphaBitsFlag == 255 ? doc.ABuffer : Plane();
    const TransformPlanes planes{&r,
                                 &g,
                                 &b,
                                 bottom ? nullptr : &coverage,
                                 matte.empty() ? nullptr : &matte,
                                 doc.width,
                                 doc.height,
                                 workspace_.colours.secondary};
    TransformPixels(planes, spec, workspace_.threadCount);

    // The area that changed: where the pixels left and where they went.
    const auto corners = TransformedCorners(spec, from);
    QPolygonF outline;
    for (const CornerPoint& corner : corners) {
        outline << QPointF(corner.x, corner.y);
    }
    const QRect imageArea(0, 0, doc.width, doc.height);
    const QRect area = outline.boundingRect()
                           .toAlignedRect()
                           .adjusted(-1, -1, 1, 1)
                           .united(QRect(from.left, from.top, from.right - from.left + 1,
                                         from.bottom - from.top + 1))
                           .intersected(imageArea);
    if (area.isEmpty()) {
        clear();
        return;
    }
    QImage image;
    if (IsFlatPicture(workspace_)) {
        PlanesToImage(r, g, b, area, image);
    } else {
        // The changed layer in its place among the others, as the canvas shows them.
        std::vector<CompositeSource> sources = VisibleSources(workspace_);
        for (CompositeSource& source : sources) {
            if (source.r == &doc.RBuffer) {
                source = {&r, &g, &b, bottom ? nullptr : &coverage, source.mode, source.opacity};
            }
        }
        LayerPixels composite = TransparentPixels(doc.width, doc.height);
        CompositeSources(sources, {area.left(), area.top(), area.width(), area.height()},
                         composite);
        LayersToImage(composite, area, image);
    }
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.left(), -area.top());
    QPen pen(Qt::black, 0, Qt::DashLine);
    painter.setPen(pen);
    painter.drawPolygon(outline);
    // Handles at the corners, as the transform tool takes them.
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(Qt::white);
    const double half = std::max(2.0, 4.0 * 100.0 / std::max(1, workspace_.view.zoom));
    for (const QPointF& corner : outline) {
        painter.drawRect(QRectF(corner.x() - half, corner.y() - half, 2 * half, 2 * half));
    }
    painter.end();
    canvas_.setPreview(image, area);
}

void TransformPreview::clear() {
    canvas_.clearPreview();
}

}  // namespace wib
