// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/openraster_modes.h"

#include <array>

namespace wib {
namespace {

// In the order of BlendMode.
constexpr std::array<const char*, kBlendModeCount> kOps = {
    "svg:src-over",   "svg:multiply",    "svg:screen",        "svg:overlay",    "svg:darken",
    "svg:lighten",    "svg:color-dodge", "svg:color-burn",    "svg:hard-light", "svg:soft-light",
    "svg:difference", "svg:exclusion",   "svg:hue",           "svg:saturation", "svg:color",
    "svg:luminosity", "svg:plus",        "wibbleton:subtract"};

}  // namespace

const char* OpenRasterCompositeOp(BlendMode mode) {
    const auto index = static_cast<std::size_t>(mode);
    return index < kOps.size() ? kOps[index] : kOps[0];
}

std::optional<BlendMode> BlendModeFromCompositeOp(std::string_view op) {
    for (std::size_t i = 0; i < kOps.size(); ++i) {
        if (op == kOps[i]) {
            return static_cast<BlendMode>(i);
        }
    }
    return std::nullopt;
}

}  // namespace wib
