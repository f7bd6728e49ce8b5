// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

// The sparkle trail of the Fx brush, apart from the connection to the
// program: which pixels a dab covers and how the colour goes onto them.
namespace fxbrush {

struct Rgb {
    int r = 0;
    int g = 0;
    int b = 0;
    bool operator==(const Rgb&) const = default;
};

// One pixel of a dab and how much of the colour it takes, 0..1.
struct Spot {
    int x = 0;
    int y = 0;
    double cover = 0;
};

struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};

// The star's radius for a pen pressure 0..1: 1 pixel at no pressure, 6 at full.
int StarRadius(double pressure);

// A four-pointed star with short diagonal glints around (cx, cy): a solid
// core, arms whose cover fades towards their tips. Only pixels inside a
// width x height image, each once.
std::vector<Spot> StarDab(Point centre, double pressure, int width, int height);

// `over` laid on `under` with the cover as opacity, rounded.
Rgb Blend(Rgb under, Rgb over, double cover);

// Where the stars of a drag from `from` to `to` go, `spacing` pixels apart,
// not counting `from` (which has its star already). The last one may fall
// short of `to`; the drag goes on from there.
std::vector<Point> TrailCentres(Point from, Point to, int spacing);

// The packed colour R + 256 G + 65536 B as its parts.
Rgb Unpack(long long packed);

}  // namespace fxbrush
