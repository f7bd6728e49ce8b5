// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/commands.h"

namespace wib {

// A coordinate in image pixels; shapes may start or end outside the image.
ParamSpec CoordinateParam(const char* name, const char* caption, long long fallback = 0);

// A tolerance 0..255 on the largest channel difference.
ParamSpec ToleranceParam();

// How a new selection meets the current one: replace, add, subtract,
// intersect, by name or position.
ParamSpec SelectionModeParam();

}  // namespace wib
