// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/swap_map_combines.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class SwapMaps : public ::testing::Test {
  protected:
    SwapMaps() {
        host.newDocument(5, 4);
        RegisterSwapMapCombines(registry);
        // A main image whose every pixel differs: red is x, green is y.
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 5; ++x) {
                SetPixel(doc, x, y,
                         {static_cast<std::uint8_t>(10 * x), static_cast<std::uint8_t>(10 * y), 5});
            }
        }
    }
    void run(const std::string& id) {
        ASSERT_EQ(registry.run(host.workspace, id, {}).status, CommandOutcome::Status::Done) << id;
    }
    void fillSwap(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
        doc.SwapR.fill(r);
        doc.SwapG.fill(g);
        doc.SwapB.fill(b);
    }
    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(SwapMaps, AFlatMidGreySwapLeavesTheWarpsStill) {
    const Document before = doc;
    for (const char* id : {"combine.displace", "combine.pool", "combine.twirl", "combine.emboss",
                           "combine.jitter"}) {
        // Jitter reaches brightness / 32 pixels: still only below 32.
        const std::uint8_t level = std::string(id) == "combine.jitter" ? 31 : 128;
        fillSwap(level, level, level);
        run(id);
        for (int x = 0; x < 5; ++x) {
            EXPECT_EQ(PackedPixel(doc, x, 2), PackedPixel(before, x, 2)) << id << " x " << x;
        }
    }
}

TEST_F(SwapMaps, DisplaceMovesByTheSwapAroundGreyAndClampsAtTheEdge) {
    fillSwap(128 + 16, 128 - 8, 0);  // two pixels right, one up
    run("combine.displace");
    EXPECT_EQ(doc.RBuffer.at(1, 2), 30);
    EXPECT_EQ(doc.GBuffer.at(1, 2), 10);
    EXPECT_EQ(doc.RBuffer.at(4, 0), 40) << "clamped to the last column";
    EXPECT_EQ(doc.GBuffer.at(4, 0), 0) << "clamped to the first row";
}

TEST_F(SwapMaps, DisplaceSamplesBetweenPixelsAsTheDistortFilterDoes) {
    fillSwap(128 + 4, 128 - 2, 0);  // half a pixel right, a quarter up
    run("combine.displace");
    EXPECT_EQ(doc.RBuffer.at(1, 2), 15) << "halfway between 10 and 20";
    EXPECT_EQ(doc.GBuffer.at(1, 2), 18) << "17.5 rounds to even";
    EXPECT_EQ(doc.RBuffer.at(4, 2), 40) << "clamped to the last column";
}

TEST_F(SwapMaps, LuminosityTakesTheSwapBrightnessAndCloakShowsItThroughBlack) {
    fillSwap(200, 200, 200);
    SetPixel(doc, 0, 0, {0, 0, 0});
    SetPixel(doc, 1, 0, {100, 50, 10});  // brightness (29900 + 29350 + 1140 + 500) / 1000 = 60
    run("combine.luminosity");
    EXPECT_EQ(PackedPixel(doc, 1, 0), (PackedColour{240, 190, 150}.packed()));
    SetPixel(doc, 0, 0, {0, 0, 0});
    fillSwap(7, 8, 9);
    run("combine.cloak");
    EXPECT_EQ(PackedPixel(doc, 0, 0), (PackedColour{7, 8, 9}.packed()));
    EXPECT_EQ(PackedPixel(doc, 1, 0), (PackedColour{240, 190, 150}.packed()));
}

TEST_F(SwapMaps, JitterRepeatsUnderTheSameSeed) {
    fillSwap(255, 255, 255);  // up to 7 pixels away
    host.workspace.seedRandom(42);
    run("combine.jitter");
    const Document first = doc;
    ASSERT_TRUE(EditUndo(host.workspace));
    host.workspace.seedRandom(42);
    run("combine.jitter");
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 5; ++x) {
            EXPECT_EQ(PackedPixel(doc, x, y), PackedPixel(first, x, y));
        }
    }
}

}  // namespace
}  // namespace wib
