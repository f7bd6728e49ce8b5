// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_row.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/workspace.h"
#include "filters/filter_preview.h"
#include "filters/parallel_rows.h"

namespace wib {

bool OverlayThroughAlpha(Workspace& workspace, const Plane& r, const Plane& g, const Plane& b,
                         OverlayMode mode) {
    Document& doc = workspace.document;
    for (const Plane* plane : {&r, &g, &b}) {
        if (!plane->sameShape(doc.RBuffer)) {
            return false;
        }
    }
    ParallelRows(workspace.threadCount, doc.height, [&](int first, int end) {
        for (int y = first; y < end; ++y) {
            OverlayRow(doc.RBuffer.row(y), doc.GBuffer.row(y), doc.BBuffer.row(y), r.row(y),
                       g.row(y), b.row(y), doc.ABuffer.row(y), mode, doc.width);
        }
    });
    return true;
}

namespace {

// The planes a kernel writes, kept from one run to the next, so that a filter
// repeated over the frames of an animation allocates nothing per frame.
std::array<Plane, 3>& ScratchPlanes() {
    thread_local std::array<Plane, 3> planes;
    return planes;
}

// A scratch plane of `plane`'s shape holding its spare column and row; the
// kernel writes every image pixel.
void PrepareScratch(const Plane& plane, Plane& scratch) {
    if (!scratch.sameShape(plane)) {
        scratch = Plane::Uninitialized(plane.ubX(), plane.ubY());
    }
    for (int y = 0; y < plane.ubY(); ++y) {
        scratch.row(y)[plane.ubX()] = plane.row(y)[plane.ubX()];
    }
    std::copy(plane.row(plane.ubY()), plane.row(plane.ubY()) + plane.stride(),
              scratch.row(plane.ubY()));
}

}  // namespace

void ApplyFilter(Workspace& workspace, const ParamValues& values, const FilterKernel& kernel) {
    Document& doc = workspace.document;
    const std::array<Plane*, 3> image{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    std::array<Plane, 3>& scratch = ScratchPlanes();
    for (std::size_t c = 0; c < 3; ++c) {
        PrepareScratch(*image[c], scratch[c]);
    }
    // The result goes to the scratch planes, so that the source stays whole
    // while the kernel reads it.
    const ColourPlanes source{image, doc.width, doc.height};
    const ColourPlanes target{{&scratch[0], &scratch[1], &scratch[2]}, doc.width, doc.height};
    kernel({source, target, values, workspace, workspace.threadCount});
    if (doc.AlphaBitsFlag == 255) {
        OverlayThroughAlpha(workspace, scratch[0], scratch[1], scratch[2],
                            OverlayMode::ThroughAlpha);
        return;
    }
    for (std::size_t c = 0; c < 3; ++c) {
        std::swap(*image[c], scratch[c]);
    }
}

CommandSpec FilterRow(std::string id, std::string caption, std::string menu,
                      std::vector<ParamSpec> params, FilterKernel kernel,
                      std::string repeatQuestion) {
    CommandSpec spec{std::move(id), std::move(caption), std::move(menu), "", std::move(params)};
    spec.preview = FilterPreview{kernel, {}, true};
    spec.run = [kernel = std::move(kernel)](Workspace& workspace, const ParamValues& values) {
        ApplyFilter(workspace, values, kernel);
        return true;
    };
    spec.changesImage = true;
    spec.repeatQuestion = std::move(repeatQuestion);
    return spec;
}

}  // namespace wib
