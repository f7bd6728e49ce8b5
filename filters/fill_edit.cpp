// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/fill_edit.h"

#include <array>
#include <cstring>

#include "core/workspace.h"
#include "pixel/flood_fill.h"
#include "pixel/matte_ops.h"
#include "pixel/overlay.h"

namespace wib {

namespace {

std::array<Plane*, 3> ColourPlanesOf(Document& doc) {
    return {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
}

bool SelectionInForce(const Document& doc) {
    return doc.AlphaBitsFlag == 255;
}

// Lays the colour on the image weighted by `weight` (a matte of the image's shape).
void FillThrough(Document& doc, const Plane& weight, PackedColour colour) {
    const std::uint8_t channels[3] = {colour.r, colour.g, colour.b};
    const auto planes = ColourPlanesOf(doc);
    for (std::size_t c = 0; c < 3; ++c) {
        for (int y = 0; y < doc.height; ++y) {
            FillThroughMatteRow(planes[c]->row(y), weight.row(y), channels[c], doc.width);
        }
    }
}

}  // namespace

void FloodFill(Workspace& workspace, const FloodFillRule& rule) {
    Document& doc = workspace.document;
    Plane region(doc.width, doc.height);
    const RgbPlanes image{{doc.RBuffer.data(), doc.GBuffer.data(), doc.BBuffer.data()},
                          doc.RBuffer.stride(),
                          doc.width,
                          doc.height};
    const RegionRule regionRule{.tolerance = rule.tolerance,
                                .contiguous = rule.contiguous,
                                .eightConnected = rule.eightConnected};
    if (FindRegion(image, rule.x, rule.y, regionRule, region.data(), region.stride()) == 0) {
        return;
    }
    if (SelectionInForce(doc)) {
        for (int y = 0; y < doc.height; ++y) {
            CombineMatteRow(region.row(y), doc.ABuffer.row(y), MatteMode::Intersect, doc.width);
        }
    }
    FillThrough(doc, region, workspace.colours.primary);
}

void FillSelection(Workspace& workspace) {
    Document& doc = workspace.document;
    if (!SelectionInForce(doc)) {
        ClearImage(doc, workspace.colours.primary);
        return;
    }
    FillThrough(doc, doc.ABuffer, workspace.colours.primary);
}

void DrawGradient(Workspace& workspace, const GradientStroke& stroke) {
    Document& doc = workspace.document;
    const PackedColour from = workspace.colours.primary;
    const PackedColour to = workspace.colours.secondary;
    GradientSpec spec;
    spec.x0 = stroke.x0;
    spec.y0 = stroke.y0;
    spec.x1 = stroke.x1;
    spec.y1 = stroke.y1;
    spec.shape = stroke.shape;
    spec.dither = stroke.dither;
    spec.from[0] = from.r;
    spec.from[1] = from.g;
    spec.from[2] = from.b;
    spec.to[0] = to.r;
    spec.to[1] = to.g;
    spec.to[2] = to.b;
    std::array<Plane, 3> rendered{Plane(doc.width, doc.height), Plane(doc.width, doc.height),
                                  Plane(doc.width, doc.height)};
    RenderGradient(spec, rendered[0].data(), rendered[1].data(), rendered[2].data(),
                   rendered[0].stride(), doc.width, doc.height);
    const auto planes = ColourPlanesOf(doc);
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
