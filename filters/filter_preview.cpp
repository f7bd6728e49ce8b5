// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_preview.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "core/workspace.h"
#include "pixel/overlay.h"

namespace wib {

namespace {

FilterPreview* EditablePreview(CommandSpec& row) {
    return std::any_cast<FilterPreview>(&row.preview);
}

Plane CopyRect(const Plane& plane, const PixelRect& rect) {
    // The spare column and row of the copy are no image pixels; zero suits.
    Plane copy(rect.width, rect.height);
    for (int y = 0; y < rect.height; ++y) {
        std::memcpy(copy.row(y), plane.row(rect.top + y) + rect.left,
                    static_cast<std::size_t>(rect.width));
    }
    return copy;
}

}  // namespace

const FilterPreview* PreviewOf(const CommandSpec& command) {
    const auto* preview = std::any_cast<FilterPreview>(&command.preview);
    return preview != nullptr && preview->available ? preview : nullptr;
}

CommandSpec WithPreviewReach(CommandSpec row, PreviewReach reach) {
    if (FilterPreview* preview = EditablePreview(row)) {
        preview->reach = std::move(reach);
    }
    return row;
}

CommandSpec WithoutPreview(CommandSpec row) {
    if (FilterPreview* preview = EditablePreview(row)) {
        preview->available = false;
    }
    return row;
}

PreviewReach IntegerReach(std::string name, int extra) {
    return [name = std::move(name), extra](const ParamValues& values) {
        return static_cast<int>(values.integer(name)) + extra;
    };
}

PreviewReach NumberReach(std::string name, double sigmas, int extra) {
    return [name = std::move(name), sigmas, extra](const ParamValues& values) {
        return static_cast<int>(std::ceil(values.number(name) * sigmas)) + extra;
    };
}

PreviewReach FixedReach(int pixels) {
    return [pixels](const ParamValues&) { return pixels; };
}

PreviewSource CopyPreviewSource(const Document& document, const std::mt19937& random,
                                PixelRect shown, int reach) {
    const int right = std::min(document.width, shown.left + shown.width);
    const int bottom = std::min(document.height, shown.top + shown.height);
    shown.left = std::clamp(shown.left, 0, document.width);
    shown.top = std::clamp(shown.top, 0, document.height);
    shown.width = std::max(0, right - shown.left);
    shown.height = std::max(0, bottom - shown.top);
    PixelRect region{0, 0, document.width, document.height};
    if (reach >= 0) {
        region.left = std::max(0, shown.left - reach);
        region.top = std::max(0, shown.top - reach);
        region.width = std::min(document.width, shown.left + shown.width + reach) - region.left;
        region.height = std::min(document.height, shown.top + shown.height + reach) - region.top;
    }
    PreviewSource source{CopyRect(document.RBuffer, region),
                         CopyRect(document.GBuffer, region),
                         CopyRect(document.BBuffer, region),
                         {},
                         region,
                         shown,
                         random};
    if (document.AlphaBitsFlag == 255) {
        source.alpha = CopyRect(document.ABuffer, shown);
    }
    return source;
}

PreviewPixels RunPreview(PreviewSource& source, const FilterKernel& kernel,
                         const ParamValues& values, HostServices host, int threads) {
    // The kernel's context wants a workspace; this one is the worker's own,
    // with the generator as it stood, so that noise previews as it will apply.
    Workspace scratch(host);
    scratch.random = source.random;
    scratch.threadCount = threads;
    Plane r = source.r, g = source.g, b = source.b;
    const PixelRect& region = source.region;
    const ColourPlanes in{{&source.r, &source.g, &source.b}, region.width, region.height};
    const ColourPlanes out{{&r, &g, &b}, region.width, region.height};
    kernel({in, out, values, scratch, threads});

    const PixelRect inner{source.shown.left - region.left, source.shown.top - region.top,
                          source.shown.width, source.shown.height};
    PreviewPixels pixels{CopyRect(r, inner), CopyRect(g, inner), CopyRect(b, inner), source.shown};
    if (!source.alpha.empty()) {
        // As the filter does through the selection: the result blended over
        // the image as it is.
        Plane baseR = CopyRect(source.r, inner), baseG = CopyRect(source.g, inner),
              baseB = CopyRect(source.b, inner);
        for (int y = 0; y < inner.height; ++y) {
            OverlayRow(baseR.row(y), baseG.row(y), baseB.row(y), pixels.r.row(y), pixels.g.row(y),
                       pixels.b.row(y), source.alpha.row(y), OverlayMode::ThroughAlpha,
                       inner.width);
        }
        pixels.r = std::move(baseR);
        pixels.g = std::move(baseG);
        pixels.b = std::move(baseB);
    }
    return pixels;
}

}  // namespace wib
