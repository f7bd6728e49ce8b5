// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/image_point_params.h"

#include "core/commands.h"
#include "core/document_limits.h"

namespace wib {

ParamSpec CoordinateParam(const char* name, const char* caption, long long fallback) {
    return IntegerParam(name, caption, -kMaxDocumentSide, 2 * kMaxDocumentSide, fallback);
}

ParamSpec ToleranceParam() {
    return IntegerParam("tolerance", "Tolerance", 0, 255, 32);
}

ParamSpec SelectionModeParam() {
    return ChoiceParam("mode", "Mode", {"Replace", "Add", "Subtract", "Intersect"}, 0);
}

}  // namespace wib
