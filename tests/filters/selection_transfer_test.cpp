// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/selection_commands.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Values = std::map<std::string, ParamValue>;

// The selection from the layer's alpha, and through the swap image and back.
class SelectionTransfer : public ::testing::Test {
  protected:
    SelectionTransfer() {
        host.newDocument(16, 10);
        RegisterSelectionCommands(registry);
    }
    void run(const std::string& id, const Values& values = {}) {
        const CommandOutcome outcome = registry.run(host.workspace, id, values);
        ASSERT_EQ(outcome.status, CommandOutcome::Status::Done) << id << ": " << outcome.error;
    }
    // Whether the alpha buffer holds `want` over the picture, and is in force.
    ::testing::AssertionResult matteIs(const Plane& want) {
        if (doc().AlphaBitsFlag != 255) {
            return ::testing::AssertionFailure() << "no selection in force";
        }
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                if (doc().ABuffer.at(x, y) != want.at(x, y)) {
                    return ::testing::AssertionFailure()
                           << "at " << x << ", " << y << ": " << int{doc().ABuffer.at(x, y)}
                           << " for " << int{want.at(x, y)};
                }
            }
        }
        return ::testing::AssertionSuccess();
    }
    Document& doc() { return host.workspace.document; }
    testing::TestHost host;
    CommandRegistry registry;
};

TEST_F(SelectionTransfer, AnOpaqueLayerSelectsEverything) {
    run("select.rectangle", {{"x", 2LL}, {"y", 2LL}, {"width", 3LL}, {"height", 3LL}});
    run("select.from_layer_alpha");
    EXPECT_TRUE(matteIs(Plane(16, 10, 255)));
}

TEST_F(SelectionTransfer, TheLayersCoverageBecomesTheMatteAsTheModeSays) {
    ASSERT_TRUE(AddLayer(host.workspace));
    Plane coverage(16, 10, 0);
    for (int x = 0; x < 16; ++x) {
        coverage.at(x, 4) = static_cast<std::uint8_t>(16 * x);
    }
    ASSERT_TRUE(SetLayerPlane(host.workspace, CurrentLayer(host.workspace), 3, coverage));
    run("select.from_layer_alpha");
    EXPECT_TRUE(matteIs(coverage));

    // Added to a box over rows 0 .. 1: the larger of the two.
    run("select.rectangle", {{"x", 0LL}, {"y", 0LL}, {"width", 16LL}, {"height", 2LL}});
    run("select.from_layer_alpha", {{"mode", std::string("add")}});
    Plane both = coverage;
    for (int x = 0; x < 16; ++x) {
        both.at(x, 0) = both.at(x, 1) = 255;
    }
    EXPECT_TRUE(matteIs(both));

    // One undo step back to the box alone.
    ASSERT_TRUE(EditUndo(host.workspace));
    Plane box(16, 10, 0);
    for (int x = 0; x < 16; ++x) {
        box.at(x, 0) = box.at(x, 1) = 255;
    }
    EXPECT_TRUE(matteIs(box));
}

TEST_F(SelectionTransfer, TheMatteGoesToTheSwapImageAsGreyAndComesBack) {
    run("select.ellipse", {{"x", 1LL}, {"y", 1LL}, {"width", 13LL}, {"height", 7LL}});
    const Plane matte = doc().ABuffer;
    run("select.save_to_swap");
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 16; ++x) {
            ASSERT_EQ(doc().SwapR.at(x, y), matte.at(x, y)) << x << ", " << y;
            ASSERT_EQ(doc().SwapG.at(x, y), matte.at(x, y));
            ASSERT_EQ(doc().SwapB.at(x, y), matte.at(x, y));
        }
    }
    int partial = 0;
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 16; ++x) {
            partial += matte.at(x, y) > 0 && matte.at(x, y) < 255 ? 1 : 0;
        }
    }
    EXPECT_GT(partial, 0) << "the ellipse is anti-aliased, so grey must survive the trip";

    run("select.none");
    run("select.load_from_swap");
    EXPECT_TRUE(matteIs(matte));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(doc().AlphaBitsFlag, 0) << "loading was one undo step";
}

TEST_F(SelectionTransfer, TheSwapImagesLuminanceIsTheMatte) {
    doc().SwapR.fill(200);  // 0.299 * 200 + 0.587 * 100 + 0.114 * 0 = 118.5, rounded up
    doc().SwapG.fill(100);
    doc().SwapB.fill(0);
    doc().SwapB.at(3, 3) = 255;  // 147.57, rounded up
    run("select.load_from_swap");
    EXPECT_EQ(doc().ABuffer.at(0, 0), 119);
    EXPECT_EQ(doc().ABuffer.at(3, 3), 148);
}

TEST_F(SelectionTransfer, WithNoSelectionTheSwapImageTurnsWhite) {
    doc().SwapR.fill(7);
    run("select.none");
    run("select.save_to_swap");
    EXPECT_EQ(doc().SwapR.at(5, 5), 255);
    EXPECT_EQ(doc().SwapB.at(15, 9), 255);
}

}  // namespace
}  // namespace wib
