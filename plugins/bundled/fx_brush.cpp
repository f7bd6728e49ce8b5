// SPDX-License-Identifier: GPL-3.0-or-later
#include "fx_brush.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace fxbrush {

int StarRadius(double pressure) {
    return 1 + static_cast<int>(std::lround(std::clamp(pressure, 0.0, 1.0) * 5.0));
}

std::vector<Spot> StarDab(Point centre, double pressure, int width, int height) {
    const int radius = StarRadius(pressure);
    // Each pixel keeps the largest cover any part of the star gives it.
    std::map<std::pair<int, int>, double> covers;
    const auto add = [&](int x, int y, double cover) {
        if (x < 0 || y < 0 || x >= width || y >= height) {
            return;
        }
        double& kept = covers[{y, x}];
        kept = std::max(kept, cover);
    };
    const int core = radius / 2;
    for (int dy = -core; dy <= core; ++dy) {
        for (int dx = -core; dx <= core; ++dx) {
            if (dx * dx + dy * dy <= core * core) {
                add(centre.x + dx, centre.y + dy, 1.0);
            }
        }
    }
    // The long arms reach twice the radius, the diagonal glints the radius.
    const int arm = 2 * radius;
    for (int d = 1; d <= arm; ++d) {
        const double cover = 1.0 - static_cast<double>(d) / (arm + 1);
        add(centre.x + d, centre.y, cover);
        add(centre.x - d, centre.y, cover);
        add(centre.x, centre.y + d, cover);
        add(centre.x, centre.y - d, cover);
    }
    for (int d = 1; d <= radius / 2 + 1; ++d) {
        const double cover = 0.5 * (1.0 - static_cast<double>(d) / (radius / 2 + 2));
        add(centre.x + d, centre.y + d, cover);
        add(centre.x - d, centre.y + d, cover);
        add(centre.x + d, centre.y - d, cover);
        add(centre.x - d, centre.y - d, cover);
    }
    std::vector<Spot> spots;
    spots.reserve(covers.size());
    for (const auto& [at, cover] : covers) {
        spots.push_back({at.second, at.first, cover});
    }
    return spots;
}

Rgb Blend(Rgb under, Rgb over, double cover) {
    const auto mix = [cover](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * std::clamp(cover, 0.0, 1.0)));
    };
    return {mix(under.r, over.r), mix(under.g, over.g), mix(under.b, over.b)};
}

std::vector<Point> TrailCentres(Point from, Point to, int spacing) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    std::vector<Point> centres;
    if (spacing <= 0) {
        return centres;
    }
    for (double along = spacing; along <= length; along += spacing) {
        centres.push_back({from.x + static_cast<int>(std::lround(dx * along / length)),
                           from.y + static_cast<int>(std::lround(dy * along / length))});
    }
    return centres;
}

Rgb Unpack(long long packed) {
    return {static_cast<int>(packed & 0xff), static_cast<int>((packed >> 8) & 0xff),
            static_cast<int>((packed >> 16) & 0xff)};
}

}  // namespace fxbrush
