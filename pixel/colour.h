// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// Hue in degrees 0..360 (-1 when undefined, for greys), saturation and value
// 0..1, from red, green and blue 0..1.
void RGB_To_HSV(double r, double g, double b, double& h, double& s, double& v);

// The inverse; a hue of -1 (or a saturation of 0) gives a grey of value v.
// Hues outside 0..360 are taken modulo 360.
void HSV_To_RGB(double h, double s, double v, double& r, double& g, double& b);

// a + (b - a) * t.
inline double LinearInterpolate(double a, double b, double t) {
    return a + (b - a) * t;
}

// Turns (x, y) about (cx, cy) by `degrees`, counter-clockwise on a y-up plane
// (clockwise on screen, where y grows downward).
void RotatePoint(double& x, double& y, double cx, double cy, double degrees);

}  // namespace wib
