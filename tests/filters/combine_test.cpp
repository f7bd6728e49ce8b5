// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/combine_filters.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class Combine : public ::testing::Test {
  protected:
    Combine() {
        host.newDocument(3, 2);
        RegisterCombineCommands(registry);
    }
    void run(const std::string& id) {
        ASSERT_EQ(registry.run(host.workspace, id, {}).status, Status::Done) << id;
    }
    void setMain(int x, int y, PackedColour c) { SetPixel(doc, x, y, c); }
    void setSwap(int x, int y, PackedColour c) {
        doc.SwapR.at(x, y) = c.r;
        doc.SwapG.at(x, y) = c.g;
        doc.SwapB.at(x, y) = c.b;
    }
    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(Combine, DifferenceWithItselfIsBlackAndWithWhiteTheNegative) {
    setMain(0, 0, {10, 200, 77});
    run("combine.copy_to_swap");
    run("combine.difference");
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0);
    setMain(1, 0, {10, 200, 77});
    setSwap(1, 0, {255, 255, 255});
    run("combine.difference");
    EXPECT_EQ(PackedPixel(doc, 1, 0), (PackedColour{245, 55, 178}.packed()));
}

TEST_F(Combine, TheMaskRoundsEachMeanAndTiesGoToWhite) {
    setMain(0, 0, {100, 100, 100});
    setSwap(0, 0, {99, 100, 102});  // 100.33 rounds to 100: a tie, white
    setMain(1, 0, {100, 100, 100});
    setSwap(1, 0, {100, 100, 103});  // 101: black
    run("combine.mask");
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0xFFFFFF);
    EXPECT_EQ(PackedPixel(doc, 1, 0), 0);
}

TEST_F(Combine, SwapBrightnessToAlphaRoundsHalvesToEven) {
    setSwap(0, 0, {1, 1, 1});
    setSwap(1, 0, {0, 1, 2});
    setSwap(2, 0, {0, 0, 1});
    run("combine.swap_to_alpha");
    EXPECT_EQ(doc.ABuffer.at(0, 0), 1);
    EXPECT_EQ(doc.ABuffer.at(1, 0), 1);
    EXPECT_EQ(doc.ABuffer.at(2, 0), 0);
    EXPECT_EQ(doc.ABuffer.at(3, 0), 255) << "the spare column is not image";
}

TEST_F(Combine, MergeThroughAlphaWeighsTwice) {
    setMain(0, 0, {0, 9, 9});
    setSwap(0, 0, {0, 200, 9});
    setMain(1, 0, {7, 8, 9});
    setSwap(1, 0, {1, 2, 3});
    setMain(2, 0, {50, 60, 70});
    setSwap(2, 0, {1, 2, 3});
    doc.ABuffer.at(0, 0) = 128;
    doc.ABuffer.at(1, 0) = 0;
    doc.ABuffer.at(2, 0) = 255;
    run("combine.merge_alpha");
    EXPECT_EQ(doc.RBuffer.at(0, 0), 63) << "s' = 127, (127 x 128) / 255";
    EXPECT_EQ(PackedPixel(doc, 1, 0), (PackedColour{7, 8, 9}.packed()));
    EXPECT_EQ(PackedPixel(doc, 2, 0), (PackedColour{1, 2, 3}.packed()));
}

TEST_F(Combine, ChannelCombinesClampAndGoThroughTheSelection) {
    const std::pair<const char*, PackedColour> expected[] = {
        {"combine.add", {255, 150, 40}},     {"combine.subtract", {90, 50, 0}},
        {"combine.multiply", {156, 19, 0}},  {"combine.screen", {254, 131, 40}},
        {"combine.lighter", {250, 100, 40}}, {"combine.darker", {160, 50, 0}},
        {"combine.mix", {205, 75, 20}},      {"combine.around_grey", {255, 22, 0}},
        {"combine.divide", {255, 255, 0}},   {"combine.bool", {90, 86, 40}},
    };
    for (const auto& [id, result] : expected) {
        setMain(0, 0, {250, 100, 0});
        setSwap(0, 0, {160, 50, 40});
        run(id);
        EXPECT_EQ(PackedPixel(doc, 0, 0), result.packed()) << id;
    }
    // With the selection in force, an unselected pixel keeps its colour.
    doc.AlphaBitsFlag = 255;
    doc.ABuffer.at(0, 0) = 0;
    setMain(0, 0, {250, 100, 0});
    run("combine.add");
    EXPECT_EQ(PackedPixel(doc, 0, 0), (PackedColour{250, 100, 0}.packed()));
}

TEST_F(Combine, ExchangeTradesPlanesAndUndoBringsTheMainBack) {
    setMain(0, 0, {1, 2, 3});
    setSwap(0, 0, {4, 5, 6});
    run("swap.exchange");
    EXPECT_EQ(PackedPixel(doc, 0, 0), (PackedColour{4, 5, 6}.packed()));
    EXPECT_EQ(doc.SwapR.at(0, 0), 1);
    EXPECT_TRUE(doc.modified);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 0, 0), (PackedColour{1, 2, 3}.packed()));
}

}  // namespace
}  // namespace wib
