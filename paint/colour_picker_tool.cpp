// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/colour_picker_tool.h"

#include <algorithm>

#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

namespace {

// The rounded mean of the square of `size` pixels centred on (x, y), the part
// inside the image; the composite is read where layers are shown over each
// other and asked for.
PackedColour SampleSquare(const Workspace& workspace, int x, int y, int size, bool composite) {
    const Document& doc = workspace.document;
    const int half = size / 2;
    const int left = std::max(0, x - half);
    const int top = std::max(0, y - half);
    const PixelRect rect{left, top, std::min(doc.width - 1, x + half) - left + 1,
                         std::min(doc.height - 1, y + half) - top + 1};
    const Plane* planes[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    LayerPixels mixed;
    if (composite && !IsFlatPicture(workspace)) {
        mixed = TransparentPixels(doc.width, doc.height);
        CompositeSources(VisibleSources(workspace), rect, mixed);
        planes[0] = &mixed.r;
        planes[1] = &mixed.g;
        planes[2] = &mixed.b;
    }
    long sum[3] = {0, 0, 0};
    const long count = static_cast<long>(rect.width) * rect.height;
    for (int py = rect.top; py < rect.top + rect.height; ++py) {
        for (int px = rect.left; px < rect.left + rect.width; ++px) {
            for (int c = 0; c < 3; ++c) {
                sum[c] += planes[c]->at(px, py);
            }
        }
    }
    auto mean = [count](long total) {
        return static_cast<std::uint8_t>((total + count / 2) / count);
    };
    return {mean(sum[0]), mean(sum[1]), mean(sum[2])};
}

}  // namespace

void ColourPickerTool::press(const ToolInput& input) {
    const Workspace& workspace = session_.workspace();
    const auto [x, y] = PixelUnder(workspace, input);
    if (x < 0 || y < 0 || x >= workspace.document.width || y >= workspace.document.height) {
        return;
    }
    const ToolOptions& options = session_.state().toolOptions;
    session_.setPrimaryColour(SampleSquare(workspace, static_cast<int>(x), static_cast<int>(y),
                                           std::clamp(options.pickerSize, 1, 5),
                                           options.pickerComposite));
}

}  // namespace wib
