// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/fill_edit.h"

#include <cstring>
#include <optional>

#include "core/layer_composite.h"
#include "core/workspace.h"
#include "filters/fill_through.h"
#include "pixel/flood_fill.h"
#include "pixel/matte_ops.h"
#include "pixel/matte_soften.h"
#include "pixel/overlay.h"

namespace wib {

namespace {

bool SelectionInForce(const Document& doc) {
    return doc.AlphaBitsFlag == 255;
}

RgbPlanes PlanesOf(const Plane& r, const Plane& g, const Plane& b, const Document& doc) {
    return {{r.data(), g.data(), b.data()}, r.stride(), doc.width, doc.height};
}

// Left to right across the region's bounding box, or where the last gradient
// was laid (the region's box while there has been none).
GradientStroke GradientFor(const Workspace& workspace, const Plane& region,
                           FillGradientPlacement placement) {
    const FillSettings& fill = workspace.fill;
    if (placement == FillGradientPlacement::LastGradient && fill.lastGradient) {
        return *fill.lastGradient;
    }
    const Document& doc = workspace.document;
    const AlphaBounds box = ComputeAlphaBounds(region, doc.width, doc.height);
    return {.x0 = static_cast<double>(box.left),
            .y0 = static_cast<double>(box.top),
            .x1 = static_cast<double>(box.right),
            .y1 = static_cast<double>(box.top)};
}

}  // namespace

void FloodFill(Workspace& workspace, const FloodFillRule& rule) {
    Document& doc = workspace.document;
    Plane region(doc.width, doc.height);
    std::optional<LayerPixels> composite;
    if (rule.sample == FillSample::Composite) {
        composite = CompositePicture(workspace);
    }
    const RgbPlanes image = composite ? PlanesOf(composite->r, composite->g, composite->b, doc)
                                      : PlanesOf(doc.RBuffer, doc.GBuffer, doc.BBuffer, doc);
    const RegionRule regionRule{.tolerance = rule.tolerance,
                                .contiguous = rule.contiguous,
                                .eightConnected = rule.eightConnected};
    if (FindRegion(image, rule.x, rule.y, regionRule, region.data(), region.stride()) == 0) {
        return;
    }
    FillPaint paint{.source = rule.source};
    if (rule.source == FillSource::Gradient) {
        paint.gradient = GradientFor(workspace, region, rule.gradient);
    }
    if (rule.antialias) {
        Plane soft(doc.width, doc.height);
        SoftenMatteEdge({region.data(), region.stride(), doc.width, doc.height},
                        {soft.data(), soft.stride(), doc.width, doc.height});
        region = std::move(soft);
    }
    if (SelectionInForce(doc)) {
        for (int y = 0; y < doc.height; ++y) {
            CombineMatteRow(region.row(y), doc.ABuffer.row(y), MatteMode::Intersect, doc.width);
        }
    }
    FillThrough(workspace, region, paint);
}

void FillSelection(Workspace& workspace) {
    Document& doc = workspace.document;
    if (!SelectionInForce(doc)) {
        ClearImage(doc, workspace.colours.primary);
        return;
    }
    FillThrough(workspace, doc.ABuffer, {});
}

void DrawGradient(Workspace& workspace, const GradientStroke& stroke) {
    Document& doc = workspace.document;
    workspace.fill.lastGradient = stroke;
    const std::array<Plane, 3> rendered = RenderGradientStroke(workspace, stroke);
    Plane* planes[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    if (!SelectionInForce(doc)) {
        for (std::size_t c = 0; c < 3; ++c) {
            for (int y = 0; y < doc.height; ++y) {
                std::memcpy(planes[c]->row(y), rendered[c].row(y),
                            static_cast<std::size_t>(doc.width));
            }
        }
        return;
    }
    for (int y = 0; y < doc.height; ++y) {
        OverlayRow(doc.RBuffer.row(y), doc.GBuffer.row(y), doc.BBuffer.row(y), rendered[0].row(y),
                   rendered[1].row(y), rendered[2].row(y), doc.ABuffer.row(y),
                   OverlayMode::ThroughAlpha, doc.width);
    }
}

}  // namespace wib
