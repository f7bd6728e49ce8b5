// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_row.h"

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

void ApplyFilter(Workspace& workspace, const ParamValues& values, const FilterKernel& kernel) {
    Document& doc = workspace.document;
    // The result goes to copies, so that the spare column and row stay as
    // they were and the source stays whole while the kernel reads it.
    Plane r = doc.RBuffer, g = doc.GBuffer, b = doc.BBuffer;
    const ColourPlanes source{{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer}, doc.width, doc.height};
    const ColourPlanes target{{&r, &g, &b}, doc.width, doc.height};
    kernel({source, target, values, workspace, workspace.threadCount});
    if (doc.AlphaBitsFlag == 255) {
        OverlayThroughAlpha(workspace, r, g, b, OverlayMode::ThroughAlpha);
        return;
    }
    doc.RBuffer = std::move(r);
    doc.GBuffer = std::move(g);
    doc.BBuffer = std::move(b);
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
