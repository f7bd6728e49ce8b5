// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

namespace wib {

// The pen's pressure range as calibrated by the user (section "Tablet"):
// raw pressure at `minimum` or below paints as 0, at `maximum` or above as 1.
struct TabletCalibration {
    double minimum = 0.0;
    double maximum = 1.0;

    double apply(double raw) const {
        if (maximum <= minimum) {
            return std::clamp(raw, 0.0, 1.0);
        }
        return std::clamp((raw - minimum) / (maximum - minimum), 0.0, 1.0);
    }
};

}  // namespace wib
