// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <vector>

#include "pixel/matte_outline.h"
#include "pixel/matte_polygon.h"

namespace wib {
namespace {

struct Matte {
    Matte(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w * h), 0) {}
    MatteView view() { return {pixels.data(), static_cast<std::size_t>(width), width, height}; }
    MatteSource source() const {
        return {pixels.data(), static_cast<std::size_t>(width), width, height};
    }
    std::uint8_t& at(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }
    int width, height;
    std::vector<std::uint8_t> pixels;
};

using Corners = std::vector<std::array<double, 2>>;

TEST(PolygonMatte, AnAxisAlignedSquareOnPixelEdgesIsExactHardOrSoft) {
    for (const bool antialias : {false, true}) {
        Matte matte(12, 10);
        std::fill(matte.pixels.begin(), matte.pixels.end(), 77);
        PolygonMatte(matte.view(), Corners{{2, 3}, {10, 3}, {10, 8}, {2, 8}}, antialias);
        for (int y = 0; y < 10; ++y) {
            for (int x = 0; x < 12; ++x) {
                const bool inside = x >= 2 && x < 10 && y >= 3 && y < 8;
                EXPECT_EQ(matte.at(x, y), inside ? 255 : 0)
                    << x << "," << y << " antialias " << antialias;
            }
        }
    }
}

TEST(PolygonMatte, SoftEdgesCarryTheCoveredFraction) {
    Matte matte(8, 4);
    // Left edge half-way across column 1, right edge a quarter into column 6.
    PolygonMatte(matte.view(), Corners{{1.5, 0}, {6.25, 0}, {6.25, 4}, {1.5, 4}}, true);
    EXPECT_EQ(matte.at(0, 2), 0);
    EXPECT_EQ(matte.at(1, 2), 128);  // 0.5 * 255 rounded
    EXPECT_EQ(matte.at(3, 2), 255);
    EXPECT_EQ(matte.at(6, 2), 64);  // 0.25 * 255 rounded
    EXPECT_EQ(matte.at(7, 2), 0);

    // A right triangle of legs 8: its area, 32 pixels, in matte units.
    Matte triangle(10, 10);
    PolygonMatte(triangle.view(), Corners{{1, 1}, {9, 1}, {1, 9}}, true);
    long sum = 0;
    for (const std::uint8_t v : triangle.pixels) {
        sum += v;
    }
    EXPECT_NEAR(sum / 255.0, 32.0, 0.2);
}

TEST(PolygonMatte, HardEdgesTakeThePixelsWhoseCentreIsInside) {
    Matte matte(12, 12);
    const Corners corners{{0.5, 1}, {11, 6.2}, {2, 11.5}};
    PolygonMatte(matte.view(), corners, false);
    // Same-side test against each edge of the counter-clockwise triangle.
    auto inside = [&corners](double px, double py) {
        int sign = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& a = corners[i];
            const auto& b = corners[(i + 1) % 3];
            const double cross = (b[0] - a[0]) * (py - a[1]) - (b[1] - a[1]) * (px - a[0]);
            const int s = cross > 0 ? 1 : -1;
            if (sign != 0 && s != sign) {
                return false;
            }
            sign = s;
        }
        return true;
    };
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
            EXPECT_EQ(matte.at(x, y), inside(x + 0.5, y + 0.5) ? 255 : 0) << x << "," << y;
        }
    }
}

TEST(PolygonMatte, TooFewCornersOrAPolygonOutsideSelectNothing) {
    Matte matte(6, 6);
    std::fill(matte.pixels.begin(), matte.pixels.end(), 200);
    PolygonMatte(matte.view(), Corners{{0, 0}, {5, 5}}, true);
    EXPECT_EQ(std::count(matte.pixels.begin(), matte.pixels.end(), 0), 36);
    PolygonMatte(matte.view(), Corners{{-9, -9}, {-2, -9}, {-2, -1}}, false);
    EXPECT_EQ(std::count(matte.pixels.begin(), matte.pixels.end(), 0), 36);
}

using Edge = std::tuple<int, int, int, int>;

std::vector<Edge> Edges(const Matte& matte) {
    std::vector<Edge> edges;
    for (const OutlineEdge& e : MatteOutline(matte.source())) {
        edges.emplace_back(e.x0, e.y0, e.x1, e.y1);
    }
    std::sort(edges.begin(), edges.end());
    return edges;
}

TEST(MatteOutline, ARectangleHasFourSidesOnItsPixelEdges) {
    Matte matte(6, 5);
    for (int y = 1; y <= 2; ++y) {
        for (int x = 1; x <= 3; ++x) {
            matte.at(x, y) = 255;
        }
    }
    matte.at(5, 4) = 127;  // below half: outside
    const std::vector<Edge> expected{{1, 1, 1, 3}, {1, 1, 4, 1}, {1, 3, 4, 3}, {4, 1, 4, 3}};
    EXPECT_EQ(Edges(matte), expected);
}

TEST(MatteOutline, HalfIsInsideAndTheImageBorderClosesTheOutline) {
    Matte matte(3, 2);
    std::fill(matte.pixels.begin(), matte.pixels.end(), 128);
    const std::vector<Edge> whole{{0, 0, 0, 2}, {0, 0, 3, 0}, {0, 2, 3, 2}, {3, 0, 3, 2}};
    EXPECT_EQ(Edges(matte), whole);

    // Two pixels touching at a corner: two squares' sides, 8 pixel edges in
    // all (the two in line where they touch may run as one).
    Matte diagonal(3, 3);
    diagonal.at(0, 0) = 255;
    diagonal.at(1, 1) = 255;
    int length = 0;
    for (const auto& [x0, y0, x1, y1] : Edges(diagonal)) {
        length += (x1 - x0) + (y1 - y0);
    }
    EXPECT_EQ(length, 8);
    EXPECT_TRUE(Edges(Matte(4, 4)).empty());
}

}  // namespace
}  // namespace wib
