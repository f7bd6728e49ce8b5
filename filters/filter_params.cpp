// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_params.h"

#include <utility>

namespace wib {

namespace {

ParamSpec Param(const char* name, const char* caption, ParamType type, ParamValue fallback) {
    ParamSpec spec;
    spec.name = name;
    spec.caption = caption;
    spec.type = type;
    spec.fallback = std::move(fallback);
    return spec;
}

}  // namespace

ParamSpec NumberParam(const char* name, const char* caption, double minimum, double maximum,
                      double fallback) {
    ParamSpec spec = Param(name, caption, ParamType::Number, fallback);
    spec.minimum = minimum;
    spec.maximum = maximum;
    return spec;
}

ParamSpec ColourParam(const char* name, const char* caption, std::uint32_t fallback) {
    return Param(name, caption, ParamType::Colour, static_cast<long long>(fallback));
}

ParamSpec BooleanParam(const char* name, const char* caption, bool fallback) {
    return Param(name, caption, ParamType::Boolean, fallback ? -1LL : 0LL);
}

ParamSpec ChoiceParam(const char* name, const char* caption,
                      std::initializer_list<const char*> choices, int fallback) {
    ParamSpec spec = Param(name, caption, ParamType::Choice, static_cast<long long>(fallback));
    spec.choices.assign(choices.begin(), choices.end());
    return spec;
}

}  // namespace wib
