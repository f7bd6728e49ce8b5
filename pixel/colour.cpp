// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/colour.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace wib {

void RGB_To_HSV(double r, double g, double b, double& h, double& s, double& v) {
    const double maximum = std::max({r, g, b});
    const double minimum = std::min({r, g, b});
    const double chroma = maximum - minimum;
    v = maximum;
    s = maximum > 0.0 ? chroma / maximum : 0.0;
    if (chroma <= 0.0) {
        h = -1.0;
        return;
    }
    if (maximum == r) {
        h = 60.0 * ((g - b) / chroma);
    } else if (maximum == g) {
        h = 60.0 * ((b - r) / chroma + 2.0);
    } else {
        h = 60.0 * ((r - g) / chroma + 4.0);
    }
    if (h < 0.0) {
        h += 360.0;
    }
}

void HSV_To_RGB(double h, double s, double v, double& r, double& g, double& b) {
    if (h < 0.0 || s <= 0.0) {
        r = g = b = v;
        return;
    }
    h = std::fmod(h, 360.0) / 60.0;
    const int sector = static_cast<int>(std::floor(h)) % 6;
    const double f = h - std::floor(h);
    const double p = v * (1.0 - s);
    const double q = v * (1.0 - s * f);
    const double t = v * (1.0 - s * (1.0 - f));
    switch (sector) {
        case 0:
            r = v, g = t, b = p;
            break;
        case 1:
            r = q, g = v, b = p;
            break;
        case 2:
            r = p, g = v, b = t;
            break;
        case 3:
            r = p, g = q, b = v;
            break;
        case 4:
            r = t, g = p, b = v;
            break;
        default:
            r = v, g = p, b = q;
            break;
    }
}

void RotatePoint(double& x, double& y, double cx, double cy, double degrees) {
    const double radians = degrees * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const double dx = x - cx;
    const double dy = y - cy;
    x = cx + dx * c - dy * s;
    y = cy + dx * s + dy * c;
}

}  // namespace wib
