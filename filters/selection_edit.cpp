// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/selection_edit.h"

#include <cstring>
#include <utility>

#include "core/workspace.h"
#include "filters/parallel_rows.h"
#include "pixel/flood_fill.h"
#include "pixel/interleave.h"
#include "pixel/matte_feather.h"
#include "pixel/matte_morphology.h"
#include "pixel/matte_polygon.h"

namespace wib {

namespace {

constexpr std::uint8_t kInForce = 255;

bool InForce(const Document& doc) {
    return doc.AlphaBitsFlag == kInForce;
}

MatteView ViewOf(Plane& plane, const Document& doc) {
    return {plane.data(), plane.stride(), doc.width, doc.height};
}

MatteSource SourceOf(const Plane& plane, const Document& doc) {
    return {plane.data(), plane.stride(), doc.width, doc.height};
}

// A matte of the document's shape for results on their way to the alpha buffer.
Plane ScratchMatte(const Document& doc) {
    return Plane(doc.width, doc.height);
}

void Feather(Workspace& workspace, const Plane& source, Plane& target, double radius) {
    const Document& doc = workspace.document;
    ParallelRows(workspace.threadCount, doc.height, [&](int first, int end) {
        FeatherMatte(SourceOf(source, doc), ViewOf(target, doc), radius, first, end);
    });
}

// Puts `incoming` into the alpha buffer as `mode` says and the selection in force.
void Commit(Workspace& workspace, const Plane& incoming, MatteMode mode) {
    Document& doc = workspace.document;
    if (!InForce(doc) && mode != MatteMode::Replace) {
        doc.ABuffer.fill(0);
    }
    for (int y = 0; y < doc.height; ++y) {
        CombineMatteRow(doc.ABuffer.row(y), incoming.row(y), mode, doc.width);
    }
    doc.AlphaBitsFlag = kInForce;
}

// Takes `result` as the new alpha buffer, leaving its spare column and row.
void Adopt(Document& doc, const Plane& result) {
    for (int y = 0; y < doc.height; ++y) {
        std::memcpy(doc.ABuffer.row(y), result.row(y), static_cast<std::size_t>(doc.width));
    }
}

}  // namespace

void SelectAll(Workspace& workspace) {
    workspace.document.ABuffer.fill(255);
    workspace.document.AlphaBitsFlag = kInForce;
}

void SelectNone(Workspace& workspace) {
    workspace.document.ABuffer.fill(255);
    workspace.document.AlphaBitsFlag = 0;
}

void InvertSelection(Workspace& workspace) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        doc.ABuffer.fill(255);
    }
    for (int y = 0; y < doc.height; ++y) {
        InvertMatteRow(doc.ABuffer.row(y), doc.width);
    }
    doc.AlphaBitsFlag = kInForce;
}

namespace {

// Feathers a new selection's matte as asked, then commits it.
void CommitFeathered(Workspace& workspace, Plane matte, double feather, MatteMode mode) {
    if (feather > 0) {
        Plane feathered = ScratchMatte(workspace.document);
        Feather(workspace, matte, feathered, feather);
        matte = std::move(feathered);
    }
    Commit(workspace, matte, mode);
}

}  // namespace

void SelectShape(Workspace& workspace, const ShapeSelection& shape) {
    const Document& doc = workspace.document;
    Plane matte = ScratchMatte(doc);
    if (shape.ellipse) {
        EllipseMatte(ViewOf(matte, doc), shape.box, shape.antialias);
    } else {
        RectangleMatte(ViewOf(matte, doc), shape.box);
    }
    CommitFeathered(workspace, std::move(matte), shape.feather, shape.mode);
}

void SelectPolygon(Workspace& workspace, const PolygonSelection& polygon) {
    const Document& doc = workspace.document;
    Plane matte = ScratchMatte(doc);
    PolygonMatte(ViewOf(matte, doc), polygon.corners, polygon.antialias);
    CommitFeathered(workspace, std::move(matte), polygon.feather, polygon.mode);
}

void SelectSimilar(Workspace& workspace, int x, int y, int tolerance, bool contiguous,
                   MatteMode mode) {
    const Document& doc = workspace.document;
    Plane region = ScratchMatte(doc);
    const RgbPlanes image{{doc.RBuffer.data(), doc.GBuffer.data(), doc.BBuffer.data()},
                          doc.RBuffer.stride(),
                          doc.width,
                          doc.height};
    FindRegion(image, x, y, {.tolerance = tolerance, .contiguous = contiguous}, region.data(),
               region.stride());
    Commit(workspace, region, mode);
}

void SelectFromLayerAlpha(Workspace& workspace, MatteMode mode) {
    const Document& doc = workspace.document;
    if (doc.Coverage.empty()) {
        Commit(workspace, Plane(doc.width, doc.height, 255), mode);
        return;
    }
    Commit(workspace, doc.Coverage, mode);
}

void LoadSelectionFromSwap(Workspace& workspace, MatteMode mode) {
    const Document& doc = workspace.document;
    Plane luminance = ScratchMatte(doc);
    for (int y = 0; y < doc.height; ++y) {
        JoinGrey(doc.SwapR.row(y), doc.SwapG.row(y), doc.SwapB.row(y),
                 static_cast<std::size_t>(doc.width), luminance.row(y));
    }
    Commit(workspace, luminance, mode);
}

void SaveSelectionToSwap(Workspace& workspace) {
    Document& doc = workspace.document;
    for (Plane* swap : {&doc.SwapR, &doc.SwapG, &doc.SwapB}) {
        for (int y = 0; y < doc.height; ++y) {
            if (InForce(doc)) {
                std::memcpy(swap->row(y), doc.ABuffer.row(y), static_cast<std::size_t>(doc.width));
            } else {
                std::memset(swap->row(y), 255, static_cast<std::size_t>(doc.width));
            }
        }
    }
}

void FeatherSelection(Workspace& workspace, double radius) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        return;
    }
    Plane feathered = ScratchMatte(doc);
    Feather(workspace, doc.ABuffer, feathered, radius);
    Adopt(doc, feathered);
}

void GrowSelection(Workspace& workspace, int radius) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        return;
    }
    Plane grown = ScratchMatte(doc);
    GrowMatte(SourceOf(doc.ABuffer, doc), grown.data(), grown.stride(), radius);
    Adopt(doc, grown);
}

void ShrinkSelection(Workspace& workspace, int radius) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        return;
    }
    Plane shrunk = ScratchMatte(doc);
    ShrinkMatte(SourceOf(doc.ABuffer, doc), shrunk.data(), shrunk.stride(), radius);
    Adopt(doc, shrunk);
}

void BorderSelection(Workspace& workspace, int radius) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        return;
    }
    // Grown but not shrunk: min(grown, 255 - shrunk).
    Plane grown = ScratchMatte(doc);
    Plane shrunk = ScratchMatte(doc);
    GrowMatte(SourceOf(doc.ABuffer, doc), grown.data(), grown.stride(), radius);
    ShrinkMatte(SourceOf(doc.ABuffer, doc), shrunk.data(), shrunk.stride(), radius);
    for (int y = 0; y < doc.height; ++y) {
        CombineMatteRow(grown.row(y), shrunk.row(y), MatteMode::Subtract, doc.width);
    }
    Adopt(doc, grown);
}

void SmoothSelection(Workspace& workspace, int radius) {
    Document& doc = workspace.document;
    if (!InForce(doc)) {
        return;
    }
    Plane smooth = ScratchMatte(doc);
    Feather(workspace, doc.ABuffer, smooth, radius);
    for (int y = 0; y < doc.height; ++y) {
        ThresholdMatteRow(smooth.row(y), doc.width);
    }
    Adopt(doc, smooth);
}

}  // namespace wib
