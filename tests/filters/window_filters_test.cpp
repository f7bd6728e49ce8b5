// SPDX-License-Identifier: GPL-3.0-or-later
// The Blur, Sharpen, Edge and Rank rows as scripts reach them: values checked,
// all three planes filtered in bands, the menus they sit in.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_commands.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class WindowRows : public ::testing::Test {
  protected:
    WindowRows() {
        host.newDocument(13, 9);
        host.workspace.threadCount = 3;
        RegisterFilterCommands(registry);
        std::mt19937 random(3);
        for (Plane* plane : planes()) {
            for (int y = 0; y <= doc.height; ++y) {
                for (int x = 0; x <= doc.width; ++x) {
                    plane->at(x, y) = static_cast<std::uint8_t>(random() % 256);
                }
            }
        }
    }
    std::array<Plane*, 3> planes() { return {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer}; }
    CommandOutcome run(const std::string& id, const std::map<std::string, ParamValue>& values) {
        return registry.run(host.workspace, id, values);
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(WindowRows, BoxBlurFiltersEveryPlaneAndLeavesTheSpareColumnAndRow) {
    const Plane r = doc.RBuffer, g = doc.GBuffer, b = doc.BBuffer;
    ASSERT_EQ(run("filter.blur.box", {{"radius", 1LL}}).status, Status::Done);
    const Plane* before[3] = {&r, &g, &b};
    for (int c = 0; c < 3; ++c) {
        const Plane& old = *before[c];
        const Plane& now = *planes()[static_cast<std::size_t>(c)];
        for (int y = 0; y <= doc.height; ++y) {
            for (int x = 0; x <= doc.width; ++x) {
                if (x == doc.width || y == doc.height) {
                    ASSERT_EQ(now.at(x, y), old.at(x, y)) << "spare " << x << "," << y;
                    continue;
                }
                double sum = 0;
                for (int j = -1; j <= 1; ++j) {
                    for (int i = -1; i <= 1; ++i) {
                        sum += old.at(std::clamp(x + i, 0, doc.width - 1),
                                      std::clamp(y + j, 0, doc.height - 1));
                    }
                }
                ASSERT_EQ(now.at(x, y), std::floor(sum / 9 + 0.5)) << c << ":" << x << "," << y;
            }
        }
    }
}

TEST_F(WindowRows, ConvolveTakesAKernelListAndTruncatesTowardZero) {
    for (Plane* plane : planes()) {
        plane->fill(10);
    }
    // Minus the pixel to the upper left, over 4: -10 / 4 truncates to -2.
    const IntegerList kernel{-1, 0, 0, 0, 0, 0, 0, 0, 0};
    ASSERT_EQ(
        run("filter.convolve", {{"kernel", kernel}, {"divisor", 4LL}, {"offset", 7LL}}).status,
        Status::Done);
    EXPECT_EQ(doc.GBuffer.at(5, 5), 5);
    IntegerList big(25, 1);
    ASSERT_EQ(
        run("filter.convolve", {{"kernel", big}, {"divisor", -25LL}, {"offset", 20LL}}).status,
        Status::Done);
    EXPECT_EQ(doc.BBuffer.at(0, 0), 15);
}

TEST_F(WindowRows, BadValuesAreRefusedByNameAndChangeNothing) {
    const Plane before = doc.RBuffer;
    const std::pair<const char*, std::map<std::string, ParamValue>> bad[] = {
        {"filter.blur.box", {{"radius", 0LL}}},
        {"filter.blur.box", {{"radius", 2.5}}},
        {"filter.blur.gaussian", {{"sigma", 0.2}}},
        {"filter.rank.median", {{"radius", 51LL}}},
        {"filter.convolve", {{"kernel", IntegerList(8, 1)}}},
        {"filter.convolve", {{"kernel", 1LL}}},
        {"filter.convolve", {{"kernel", IntegerList(9, 70000)}}},
        {"filter.convolve", {{"divisor", 0LL}}},
        {"filter.blur.box", {{"radius", IntegerList{3}}}},
        {"filter.blur.radial", {{"angle", 361LL}}},
        {"filter.blur.zoom", {{"x", 101LL}}},
        {"filter.blur.lens", {{"radius", 101LL}}},
        {"filter.blur.surface", {{"threshold", 0LL}}},
    };
    for (const auto& [id, values] : bad) {
        const CommandOutcome outcome = run(id, values);
        EXPECT_EQ(outcome.status, Status::BadParameter) << id;
        EXPECT_NE(outcome.error.find(values.begin()->first), std::string::npos) << outcome.error;
    }
    EXPECT_EQ(doc.RBuffer.at(4, 4), before.at(4, 4));
    EXPECT_TRUE(std::equal(doc.RBuffer.data(), doc.RBuffer.data() + before.count(), before.data()));
}

TEST_F(WindowRows, EachFamilySitsInItsMenuAndRunsWithItsDefaults) {
    const std::pair<const char*, const char*> rows[] = {
        {"filter.blur.box", "Filter/Blur"},           {"filter.blur.gaussian", "Filter/Blur"},
        {"filter.blur.motion", "Filter/Blur"},        {"filter.sharpen.sharpen", "Filter/Sharpen"},
        {"filter.sharpen.unsharp", "Filter/Sharpen"}, {"filter.sharpen.emboss", "Filter/Sharpen"},
        {"filter.convolve", "Filter/Sharpen"},        {"filter.edge.sobel", "Filter/Edge"},
        {"filter.edge.laplacian", "Filter/Edge"},     {"filter.edge.find", "Filter/Edge"},
        {"filter.edge.threshold", "Filter/Edge"},     {"filter.rank.median", "Filter/Rank"},
        {"filter.rank.minimum", "Filter/Rank"},       {"filter.rank.maximum", "Filter/Rank"},
        {"filter.rank.despeckle", "Filter/Rank"},     {"filter.blur.radial", "Filter/Blur"},
        {"filter.blur.zoom", "Filter/Blur"},          {"filter.blur.lens", "Filter/Blur"},
        {"filter.blur.surface", "Filter/Blur"},
    };
    for (const auto& [id, menu] : rows) {
        const CommandSpec* spec = registry.find(id);
        ASSERT_NE(spec, nullptr) << id;
        EXPECT_EQ(spec->menu, menu) << id;
        EXPECT_EQ(run(id, {}).status, Status::Done) << id;
    }
}

TEST_F(WindowRows, PathBlursPlaceTheirCentreInPercentOfTheImage) {
    // The centre pixel is its own only sample, so it keeps its colour; the
    // opposite corner, far from it, is blurred.
    for (const char* id : {"filter.blur.radial", "filter.blur.zoom"}) {
        for (const long long at : {0LL, 100LL}) {
            const Plane before = doc.GBuffer;
            const int cx = at == 0 ? 0 : doc.width - 1, cy = at == 0 ? 0 : doc.height - 1;
            const int fx = doc.width - 1 - cx, fy = doc.height - 1 - cy;
            ASSERT_EQ(run(id, {{"x", at}, {"y", at}}).status, Status::Done) << id;
            EXPECT_EQ(doc.GBuffer.at(cx, cy), before.at(cx, cy)) << id << " at " << at;
            EXPECT_NE(doc.GBuffer.at(fx, fy), before.at(fx, fy)) << id << " at " << at;
        }
    }
}

}  // namespace
}  // namespace wib
