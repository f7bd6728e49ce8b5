// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/commands.h"
#include "filters/colour_planes.h"
#include "pixel/overlay.h"

namespace wib {

class Workspace;

inline constexpr const char* kRepeatFilterQuestion = "Apply filter to all frames?";

// What one filter does to the pixels: reads `source`, writes every image
// pixel of `target` (planes of the same shape, separate from the source), with
// the values its panel gives. `threads` is how many bands its rows may split
// into.
struct FilterContext {
    const ColourPlanes& source;
    const ColourPlanes& target;
    const ParamValues& values;
    Workspace& workspace;
    int threads = 1;
};
using FilterKernel = std::function<void(const FilterContext& context)>;

// The overlay routine over the whole image: blends the three planes of a
// second image (the document's shape) into the main buffer through the alpha
// buffer, as `mode` says. False, changing nothing, for planes of another shape.
bool OverlayThroughAlpha(Workspace& workspace, const Plane& r, const Plane& g, const Plane& b,
                         OverlayMode mode);

// Runs `kernel` on the current image: where the selection is in force (the
// alpha buffer, AlphaBitsFlag 255) the result is blended in through it by the
// overlay routine, otherwise it replaces the image.
void ApplyFilter(Workspace& workspace, const ParamValues& values, const FilterKernel& kernel);

// One filter's row in the command table: the menu is its path
// ("Filter/Blur"), the row changes the image and offers to repeat over the
// frames of an animation with `repeatQuestion`.
CommandSpec FilterRow(std::string id, std::string caption, std::string menu,
                      std::vector<ParamSpec> params, FilterKernel kernel,
                      std::string repeatQuestion = kRepeatFilterQuestion);

}  // namespace wib
