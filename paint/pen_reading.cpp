// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/pen_reading.h"

#include <cmath>
#include <numbers>

namespace wib {

namespace {

double Degrees(double radians) {
    return radians * 180.0 / std::numbers::pi;
}

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

double Turn(double degrees) {
    const double turned = std::fmod(degrees, 360.0);
    return turned < 0 ? turned + 360.0 : turned;
}

}  // namespace

PenReading PenFromTilt(double pressure, double xTilt, double yTilt, double rotation) {
    // The pen's direction, seen from above, on a plane with y pointing up.
    const double right = std::tan(Radians(xTilt));
    const double up = -std::tan(Radians(yTilt));
    const double lean = std::hypot(right, up);
    PenReading pen;
    pen.tablet = true;
    pen.pressure = pressure;
    pen.altitude = Degrees(std::atan2(1.0, lean));
    pen.azimuth = lean > 0 ? Turn(Degrees(std::atan2(up, right))) : 0.0;
    pen.pitch = yTilt;
    pen.roll = xTilt;
    pen.twist = rotation;
    pen.yaw = lean > 0 ? Turn(90.0 - pen.azimuth) : 0.0;
    return pen;
}

}  // namespace wib
