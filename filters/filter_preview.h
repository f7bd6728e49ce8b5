// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <random>
#include <string>

#include "core/commands.h"
#include "core/host/host_services.h"
#include "core/plane.h"
#include "filters/filter_row.h"
#include "pixel/pixel_rect.h"

namespace wib {

struct Document;

// How far from a pixel a kernel reads, for the values given.
using PreviewReach = std::function<int(const ParamValues& values)>;

// What an option panel needs to preview a filter: its kernel, run on a copy
// of the part of the image the canvas shows. A filter whose result at a pixel
// depends only on pixels within `reach` of it previews on the shown part
// widened by that reach; one without a reach (it reads the whole image, or its
// result depends on where the pixel lies) previews on a copy of the whole
// image. A filter that reads the swap image has no preview.
struct FilterPreview {
    FilterKernel kernel;
    PreviewReach reach;
    bool available = true;
};

// The filter's preview, or nothing for a command that has none.
const FilterPreview* PreviewOf(const CommandSpec& command);

// The row with its preview restricted to the shown part widened by `reach`.
CommandSpec WithPreviewReach(CommandSpec row, PreviewReach reach);
// The row without a preview.
CommandSpec WithoutPreview(CommandSpec row);
// A reach of `extra` pixels plus the integer parameter `name`.
PreviewReach IntegerReach(std::string name, int extra = 0);
// A reach of `sigmas` times the number parameter `name`, plus `extra`.
PreviewReach NumberReach(std::string name, double sigmas, int extra = 0);
PreviewReach FixedReach(int pixels);

// A copy of what one preview reads, taken on the interface thread so that the
// worker never touches the document.
struct PreviewSource {
    Plane r, g, b;
    // The alpha plane of `shown` where the selection is in force, else empty.
    Plane alpha;
    PixelRect region;  // where the copy lies in the image
    PixelRect shown;   // the part the preview shows, within `region`
    std::mt19937 random;
};

// Copies `shown` (clipped to the image) widened by `reach` pixels, or the
// whole image for a negative reach.
PreviewSource CopyPreviewSource(const Document& document, const std::mt19937& random,
                                PixelRect shown, int reach);

// The preview's pixels: the planes of `shown`, width x height each.
struct PreviewPixels {
    Plane r, g, b;
    PixelRect shown;
};

// Runs the kernel on the copy, as the filter would run on the image: through
// the copied alpha where there is one. Safe on any thread that owns `source`;
// `host` is only passed on to the kernel's context.
PreviewPixels RunPreview(PreviewSource& source, const FilterKernel& kernel,
                         const ParamValues& values, HostServices host, int threads);

}  // namespace wib
