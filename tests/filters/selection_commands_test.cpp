// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/fill_commands.h"
#include "filters/selection_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;
using Values = std::map<std::string, ParamValue>;

class SelectionCommands : public ::testing::Test {
  protected:
    SelectionCommands() { start(20, 12); }
    void start(int width, int height) {
        host.newDocument(width, height);
        RegisterSelectionCommands(registry);
        RegisterFillCommands(registry);
    }
    void run(const std::string& id, const Values& values = {}) {
        const CommandOutcome outcome = registry.run(host.workspace, id, values);
        ASSERT_EQ(outcome.status, Status::Done) << id << ": " << outcome.error;
    }
    void rectangle(long long x, long long y, long long w, long long h, ParamValue mode = 0LL) {
        run("select.rectangle", {{"x", x}, {"y", y}, {"width", w}, {"height", h}, {"mode", mode}});
    }
    int alpha(int x, int y) const { return doc.ABuffer.at(x, y); }
    // The columns of row y whose matte is 255, as a string of '#' and '.'.
    std::string selectedRow(int y) const {
        std::string row;
        for (int x = 0; x < doc.width; ++x) {
            row += alpha(x, y) == 255 ? '#' : alpha(x, y) == 0 ? '.' : '~';
        }
        return row;
    }
    int count(int value) const {
        int n = 0;
        for (int y = 0; y < doc.height; ++y) {
            for (int x = 0; x < doc.width; ++x) {
                n += alpha(x, y) == value ? 1 : 0;
            }
        }
        return n;
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(SelectionCommands, NoneLeavesEverythingEditableAndUndoBringsTheSelectionBack) {
    EXPECT_EQ(doc.AlphaBitsFlag, 0);
    rectangle(2, 1, 3, 2);
    EXPECT_EQ(doc.AlphaBitsFlag, 255);
    EXPECT_EQ(selectedRow(1), "..###...............");
    EXPECT_EQ(selectedRow(3), "....................");
    run("select.none");
    EXPECT_EQ(doc.AlphaBitsFlag, 0);
    EXPECT_EQ(count(255), 20 * 12);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(doc.AlphaBitsFlag, 255);
    EXPECT_EQ(selectedRow(1), "..###...............");
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(doc.AlphaBitsFlag, 0);
    EXPECT_EQ(count(255), 20 * 12);
}

TEST_F(SelectionCommands, ModesCombineByNameOrPosition) {
    rectangle(0, 0, 6, 12);
    rectangle(3, 0, 6, 12, std::string("add"));
    EXPECT_EQ(selectedRow(5), "#########...........");
    rectangle(0, 0, 6, 12);
    rectangle(3, 0, 6, 12, 2LL);
    EXPECT_EQ(selectedRow(5), "###.................");
    rectangle(0, 0, 6, 12);
    rectangle(3, 0, 6, 12, std::string("Intersect"));
    EXPECT_EQ(selectedRow(5), "...###..............");
    const CommandOutcome bad =
        registry.run(host.workspace, "select.rectangle", {{"mode", std::string("xor")}});
    EXPECT_EQ(bad.status, Status::BadParameter);
    EXPECT_EQ(selectedRow(5), "...###..............");
    // With no selection in force, adding starts from nothing selected.
    run("select.none");
    rectangle(18, 0, 5, 12, std::string("add"));
    EXPECT_EQ(selectedRow(0), "..................##");
    run("select.invert");
    EXPECT_EQ(selectedRow(0), "##################..");
}

TEST_F(SelectionCommands, EllipseIsSoftByDefaultAndHardOnRequest) {
    run("select.ellipse", {{"x", 0LL}, {"y", 0LL}, {"width", 20LL}, {"height", 12LL}});
    EXPECT_GT(20 * 12 - count(255) - count(0), 10);
    EXPECT_EQ(alpha(10, 6), 255);
    run("select.ellipse",
        {{"x", 0LL}, {"y", 0LL}, {"width", 20LL}, {"height", 12LL}, {"antialias", 0LL}});
    EXPECT_EQ(count(255) + count(0), 20 * 12);
    EXPECT_EQ(selectedRow(6), "####################");
}

TEST_F(SelectionCommands, FeatherIsAGaussianOfHalfTheRadius) {
    start(200, 40);
    rectangle(100, 0, 100, 40);
    run("select.feather", {{"radius", 16.0}});
    // A straight edge between columns 99 and 100 blurred by sigma 8: the
    // normal distribution's integral across it.
    const double sigma = 8;
    for (int x = 70; x < 130; ++x) {
        const double z = (x - 99.5) / sigma;
        const double expected = 255 * 0.5 * (1 + std::erf(z / std::sqrt(2.0)));
        EXPECT_NEAR(alpha(x, 20), expected, 3.0) << x;
    }
}

TEST_F(SelectionCommands, GrowAndShrinkUseADisc) {
    rectangle(10, 5, 1, 1);
    run("select.grow", {{"radius", 3LL}});
    // 29 lattice points lie within a disc of radius 3.
    EXPECT_EQ(count(255), 29);
    EXPECT_EQ(alpha(13, 5), 255);
    EXPECT_EQ(alpha(12, 7), 255);
    EXPECT_EQ(alpha(13, 6), 0);
    run("select.shrink", {{"radius", 3LL}});
    EXPECT_EQ(count(255), 1);
    EXPECT_EQ(alpha(10, 5), 255);

    rectangle(4, 2, 10, 8);
    run("select.border", {{"radius", 1LL}});
    // The ring one pixel either side of the edge.
    EXPECT_EQ(selectedRow(1), "....##########......");
    EXPECT_EQ(selectedRow(5), "...##........##.....");
}

TEST_F(SelectionCommands, WandSelectsTheSeedsColourWithinTolerance) {
    for (int x = 0; x < 20; ++x) {
        SetPixel(doc, x, 4, {0, 0, 0});
    }
    SetPixel(doc, 3, 8, {250, 255, 255});
    SetPixel(doc, 4, 8, {240, 255, 255});
    run("select.wand", {{"x", 1LL}, {"y", 9LL}, {"tolerance", 5LL}});
    EXPECT_EQ(selectedRow(8), "####.###############");
    EXPECT_EQ(selectedRow(2), "....................");
    run("select.wand",
        {{"x", 1LL}, {"y", 9LL}, {"tolerance", 15LL}, {"contiguous", 0LL}, {"mode", 0LL}});
    EXPECT_EQ(count(255), 20 * 12 - 20);
}

TEST_F(SelectionCommands, FillFindsTheRegionOverTheImageThenGoesThroughTheSelection) {
    host.workspace.colours.primary = {255, 0, 0};
    // Two selected blocks joined only through unselected pixels.
    rectangle(0, 0, 4, 12);
    rectangle(14, 0, 6, 12, std::string("add"));
    doc.ABuffer.at(1, 1) = 128;
    run("edit.fill", {{"x", 0LL}, {"y", 0LL}, {"tolerance", 0LL}});
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0x0000FF);
    EXPECT_EQ(PackedPixel(doc, 19, 11), 0x0000FF);
    EXPECT_EQ(PackedPixel(doc, 8, 3), 0xFFFFFF);
    // Half selected: 255 * 127 / 255 of the green and blue remain.
    EXPECT_EQ(PackedPixel(doc, 1, 1), (PackedColour{255, 127, 127}.packed()));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0xFFFFFF);
}

TEST_F(SelectionCommands, FillConnectivityCrossesADiagonalGapOnlyAtEight) {
    host.workspace.colours.primary = {0, 0, 255};
    for (int i = 0; i < 12; ++i) {
        SetPixel(doc, 11 - i, i, {0, 0, 0});
    }
    run("edit.fill", {{"x", 0LL}, {"y", 0LL}});
    EXPECT_EQ(PackedPixel(doc, 19, 11), 0xFFFFFF);
    ASSERT_TRUE(EditUndo(host.workspace));
    run("edit.fill", {{"x", 0LL}, {"y", 0LL}, {"connectivity", 8LL}});
    EXPECT_EQ(PackedPixel(doc, 19, 11), 0xFF0000);
    EXPECT_EQ(PackedPixel(doc, 11, 0), 0);
    EXPECT_EQ(registry.run(host.workspace, "edit.fill", {{"connectivity", 5LL}}).status,
              Status::Refused);
    EXPECT_EQ(host.prompter.messages.back(), "Connectivity must be 4 or 8.");
}

TEST_F(SelectionCommands, FillSelectionIsWeightedByTheMatte) {
    host.workspace.colours.primary = {0, 0, 0};
    run("edit.fill_selection");
    EXPECT_EQ(PackedPixel(doc, 19, 11), 0);
    ClearImage(doc, {255, 255, 255});
    rectangle(0, 0, 2, 1);
    doc.ABuffer.at(1, 0) = 51;
    run("edit.fill_selection");
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0);
    EXPECT_EQ(PackedPixel(doc, 1, 0), (PackedColour{204, 204, 204}.packed()));
    EXPECT_EQ(PackedPixel(doc, 2, 0), 0xFFFFFF);
}

TEST_F(SelectionCommands, GradientRunsFromPrimaryToSecondaryThroughTheSelection) {
    host.workspace.colours.primary = {0, 0, 0};
    host.workspace.colours.secondary = {255, 255, 255};
    run("draw.gradient", {{"x0", 2LL}, {"y0", 0LL}, {"x1", 17LL}, {"y1", 0LL}});
    EXPECT_EQ(PackedPixel(doc, 2, 5), 0);
    EXPECT_EQ(PackedPixel(doc, 17, 5), 0xFFFFFF);
    EXPECT_EQ(doc.RBuffer.at(7, 5), 85);  // a third of the way
    ClearImage(doc, {0, 128, 0});
    rectangle(0, 0, 10, 12);
    run("draw.gradient",
        {{"x0", 0LL}, {"y0", 0LL}, {"x1", 0LL}, {"y1", 3LL}, {"shape", std::string("radial")}});
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0);
    EXPECT_EQ(PackedPixel(doc, 9, 11), 0xFFFFFF);
    EXPECT_EQ(PackedPixel(doc, 10, 0), (PackedColour{0, 128, 0}.packed()));
}

bool Same(const Plane& a, const Plane& b) {
    return a.count() == b.count() && std::equal(a.data(), a.data() + a.count(), b.data());
}

// A gradient of four levels over 64 columns, 256 rows tall: each column's
// exact value is 100 + 4x / 63.
TEST_F(SelectionCommands, GradientDitherKindChoosesOrderedOrRandom) {
    start(64, 256);
    host.workspace.colours.primary = {100, 100, 100};
    host.workspace.colours.secondary = {104, 104, 104};
    const auto gradient = [this](ParamValue dither, ParamValue kind) {
        run("draw.gradient", {{"x0", 0LL},
                              {"y0", 0LL},
                              {"x1", 63LL},
                              {"y1", 0LL},
                              {"dither", dither},
                              {"dither_kind", kind}});
        return doc.RBuffer;
    };
    // Column 8 lies at 100.51: half its pixels should round up.
    const auto upInColumn8 = [](const Plane& red) {
        int up = 0;
        for (int y = 0; y < 256; ++y) {
            up += red.at(8, y) == 101 ? 1 : 0;
        }
        return up;
    };
    const auto repeatsEvery8Rows = [](const Plane& red) {
        for (int y = 8; y < 256; ++y) {
            for (int x = 0; x < 64; ++x) {
                if (red.at(x, y) != red.at(x, y - 8)) {
                    return false;
                }
            }
        }
        return true;
    };
    const Plane none = gradient(0LL, std::string("random"));
    EXPECT_TRUE(upInColumn8(none) == 0 || upInColumn8(none) == 256) << "without dither, bands";
    const Plane ordered = gradient(-1LL, 0LL);
    EXPECT_GT(upInColumn8(ordered), 64);
    EXPECT_LT(upInColumn8(ordered), 192);
    EXPECT_TRUE(repeatsEvery8Rows(ordered));
    const Plane random = gradient(-1LL, std::string("Random"));
    EXPECT_GT(upInColumn8(random), 90);
    EXPECT_LT(upInColumn8(random), 166);
    EXPECT_FALSE(repeatsEvery8Rows(random)) << "random dither has no tile";
    EXPECT_TRUE(Same(gradient(-1LL, 1LL), random)) << "the same gradient gives the same pixels";

    for (const ParamValue& bad : {ParamValue(2LL), ParamValue(std::string("diffusion"))}) {
        const CommandOutcome outcome =
            registry.run(host.workspace, "draw.gradient", {{"dither", -1LL}, {"dither_kind", bad}});
        EXPECT_EQ(outcome.status, Status::BadParameter);
    }
    EXPECT_TRUE(Same(doc.RBuffer, random)) << "a refused gradient draws nothing";
}

TEST_F(SelectionCommands, EveryCommandIsOneUndoStep) {
    SetPixel(doc, 3, 3, {10, 20, 30});
    rectangle(1, 1, 8, 6);
    const char* ids[] = {"select.all",         "select.none",    "select.invert",
                         "select.rectangle",   "select.ellipse", "select.wand",
                         "select.feather",     "select.grow",    "select.shrink",
                         "select.border",      "select.smooth",  "edit.fill",
                         "edit.fill_selection"};
    for (std::size_t i = 0; i < std::size(ids); ++i) {
        rectangle(1, 1, 8, 6);
        const Plane alphaBefore = doc.ABuffer;
        const Plane redBefore = doc.RBuffer;
        run(ids[i]);
        ASSERT_TRUE(EditUndo(host.workspace)) << ids[i];
        EXPECT_EQ(doc.AlphaBitsFlag, 255) << ids[i];
        EXPECT_TRUE(std::equal(alphaBefore.data(), alphaBefore.data() + alphaBefore.count(),
                               doc.ABuffer.data()))
            << ids[i];
        EXPECT_TRUE(
            std::equal(redBefore.data(), redBefore.data() + redBefore.count(), doc.RBuffer.data()))
            << ids[i];
    }
}

}  // namespace
}  // namespace wib
