// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "core/commands.h"

namespace wib {

// Parameter rows for the typed values filter panels ask for, beside
// IntegerParam.
ParamSpec NumberParam(const char* name, const char* caption, double minimum, double maximum,
                      double fallback);
// A colour packed R + 256 G + 65536 B.
ParamSpec ColourParam(const char* name, const char* caption, std::uint32_t fallback);
ParamSpec BooleanParam(const char* name, const char* caption, bool fallback);
// One of `choices`, by position from 0.
ParamSpec ChoiceParam(const char* name, const char* caption,
                      std::initializer_list<const char*> choices, int fallback);

}  // namespace wib
