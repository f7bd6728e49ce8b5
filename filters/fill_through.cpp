// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/fill_through.h"

#include <vector>

#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/matte_ops.h"
#include "pixel/overlay.h"

namespace wib {

namespace {

constexpr std::uint8_t kOpaque = 255;

void LayColour(Document& doc, const Plane& weight, PackedColour colour) {
    const std::uint8_t channels[3] = {colour.r, colour.g, colour.b};
    Plane* planes[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    for (std::size_t c = 0; c < 3; ++c) {
        for (int y = 0; y < doc.height; ++y) {
            FillThroughMatteRow(planes[c]->row(y), weight.row(y), channels[c], doc.width);
        }
    }
}

void LayRow(Document& doc, const Plane& weight, int y, const std::uint8_t* r, const std::uint8_t* g,
            const std::uint8_t* b) {
    OverlayRow(doc.RBuffer.row(y), doc.GBuffer.row(y), doc.BBuffer.row(y), r, g, b, weight.row(y),
               OverlayMode::ThroughAlpha, doc.width);
}

// The brush image's colour planes, whole (spare column and row included, as
// the pattern paint mode tiles them), repeated from (0, 0).
void LayPattern(Workspace& workspace, const Plane& weight) {
    Document& doc = workspace.document;
    const BrushImage& brush = workspace.brush;
    if (brush.R.empty()) {
        return;
    }
    const Plane* tile[3] = {&brush.R, &brush.G, &brush.B};
    const auto tileWidth = static_cast<int>(brush.R.stride());
    const auto tileHeight = static_cast<int>(brush.R.rows());
    std::vector<std::uint8_t> rows[3];
    for (auto& row : rows) {
        row.resize(static_cast<std::size_t>(doc.width));
    }
    for (int y = 0; y < doc.height; ++y) {
        for (std::size_t c = 0; c < 3; ++c) {
            const std::uint8_t* from = tile[c]->row(y % tileHeight);
            for (int x = 0; x < doc.width; ++x) {
                rows[c][static_cast<std::size_t>(x)] = from[x % tileWidth];
            }
        }
        LayRow(doc, weight, y, rows[0].data(), rows[1].data(), rows[2].data());
    }
}

void LayGradient(Workspace& workspace, const Plane& weight, const GradientStroke& stroke) {
    const std::array<Plane, 3> rendered = RenderGradientStroke(workspace, stroke);
    Document& doc = workspace.document;
    for (int y = 0; y < doc.height; ++y) {
        LayRow(doc, weight, y, rendered[0].row(y), rendered[1].row(y), rendered[2].row(y));
    }
}

void RaiseCoverage(Workspace& workspace, const Plane& weight) {
    Document& doc = workspace.document;
    if (doc.Coverage.empty() || LayerAt(workspace, CurrentLayer(workspace)).lockAlpha) {
        return;
    }
    for (int y = 0; y < doc.height; ++y) {
        FillThroughMatteRow(doc.Coverage.row(y), weight.row(y), kOpaque, doc.width);
    }
}

}  // namespace

std::array<Plane, 3> RenderGradientStroke(Workspace& workspace, const GradientStroke& stroke) {
    const Document& doc = workspace.document;
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
    return rendered;
}

void FillThrough(Workspace& workspace, const Plane& weight, const FillPaint& paint) {
    switch (paint.source) {
        case FillSource::Primary:
            LayColour(workspace.document, weight, workspace.colours.primary);
            break;
        case FillSource::Secondary:
            LayColour(workspace.document, weight, workspace.colours.secondary);
            break;
        case FillSource::Pattern:
            LayPattern(workspace, weight);
            break;
        case FillSource::Gradient:
            LayGradient(workspace, weight, paint.gradient);
            break;
    }
    RaiseCoverage(workspace, weight);
}

}  // namespace wib
