// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lay_colour.h"

#include <algorithm>
#include <vector>

#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/lay_over.h"

namespace wib {

bool LayColourThroughMatte(Workspace& workspace, const Plane& matte, int left, int top,
                           PackedColour colour) {
    Document& doc = workspace.document;
    const int firstX = std::max(0, left);
    const int firstY = std::max(0, top);
    const int endX = std::min(doc.width, left + matte.ubX() + 1);
    const int endY = std::min(doc.height, top + matte.ubY() + 1);
    if (endX <= firstX || endY <= firstY) {
        return false;
    }
    const int count = endX - firstX;
    const std::vector<std::uint8_t> r(static_cast<std::size_t>(count), colour.r);
    const std::vector<std::uint8_t> g(static_cast<std::size_t>(count), colour.g);
    const std::vector<std::uint8_t> b(static_cast<std::size_t>(count), colour.b);
    std::vector<std::uint8_t> weight(static_cast<std::size_t>(count));
    const bool selection = doc.AlphaBitsFlag == 255;
    // The bottom layer is opaque whatever its coverage plane holds.
    const bool covered = CurrentLayer(workspace) != 0 && !doc.Coverage.empty();
    for (int y = firstY; y < endY; ++y) {
        const std::uint8_t* shape = matte.row(y - top) + (firstX - left);
        const std::uint8_t* selected = doc.ABuffer.row(y) + firstX;
        for (int x = 0; x < count; ++x) {
            weight[x] = selection ? static_cast<std::uint8_t>((shape[x] * selected[x] + 127) / 255)
                                  : shape[x];
        }
        std::uint8_t* coverage = covered ? doc.Coverage.row(y) + firstX : nullptr;
        LayOverRow(doc.RBuffer.row(y) + firstX, doc.GBuffer.row(y) + firstX,
                   doc.BBuffer.row(y) + firstX, coverage, r.data(), g.data(), b.data(),
                   weight.data(), count);
    }
    return true;
}

}  // namespace wib
