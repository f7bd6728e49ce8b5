// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "plugins/rpc_error.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class ColourMethods : public MethodFixture {
  protected:
    ColourMethods() {
        // A ramp of greys across the top row and three colours on the next.
        for (int x = 0; x < 8; ++x) {
            const auto v = static_cast<std::uint8_t>(x * 36);
            SetPixel(doc, x, 0, {v, v, v});
        }
        SetPixel(doc, 0, 1, {255, 0, 0});
        SetPixel(doc, 1, 1, {100, 50, 10});
        SetPixel(doc, 2, 1, {128, 128, 128});
    }
    void ok(const std::string& method, const msgpack::sbuffer& params = Params()) {
        ASSERT_EQ(errorOf(method, params), 0) << method;
    }
    int red(int x, int y) { return doc.RBuffer.at(x, y); }
};

// The tables' effect on the grey ramp, worked out here in double.
double Gamma(double v, double gamma) {
    return 255 * std::pow(v / 255, 1 / gamma);
}
double Contrast(double v, int contrast) {
    return std::clamp((v - 127.5) * (100 + contrast) / 100 + 127.5, 0.0, 255.0);
}

TEST_F(ColourMethods, ColorToRGBUnpacksAndRefusesValuesOutsideTheColourRange) {
    const auto rgb = answer("Wib_ColorToRGB", Params(197121)).get().as<std::vector<int>>();
    EXPECT_EQ(rgb, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(answer("Wib_ColorToRGB", Params(0xFFFFFF)).get().as<std::vector<int>>(),
              (std::vector<int>{255, 255, 255}));
    EXPECT_EQ(errorOf("Wib_ColorToRGB", Params(-1)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_ColorToRGB", Params(0x1000000)), kErrorBadCall);
}

TEST_F(ColourMethods, GammaAndContrastComposeInOrderUntilTheTablesAreApplied) {
    const Document before = doc;
    ok("Wib_Contrast", Params(50));
    ok("Wib_Gamma", Params(2.0));
    EXPECT_EQ(PackedPixel(doc, 3, 0), PackedPixel(before, 3, 0)) << "tables only";
    ok("Wib_SetLutImage");
    for (int x = 0; x < 8; ++x) {
        // Each table is rounded to whole levels before the next reads it.
        const double v = x * 36;
        const double expected = std::round(Gamma(std::round(Contrast(v, 50)), 2.0));
        EXPECT_NEAR(red(x, 0), expected, 1e-9) << x;
        EXPECT_EQ(doc.GBuffer.at(x, 0), red(x, 0));
    }
    // Fixed points: contrast 50 takes 108 to 98 and 180 to 206, gamma 2 then
    // takes those to 158 and 229.
    EXPECT_EQ(red(3, 0), 158);
    EXPECT_EQ(red(5, 0), 229);
}

TEST_F(ColourMethods, InitLutsGivesTheIdentityBackAndGreyscaleGreysTheLookUp) {
    ok("Wib_Gamma", Params(3.0));
    ok("Wib_InitLuts");
    EXPECT_EQ(answer("Wib_GetGrayscale").get().as<int>(), 0);
    ok("Wib_SetGrayscale", Params(-1));
    EXPECT_EQ(answer("Wib_GetGrayscale").get().as<int>(), -1);
    ok("Wib_SetLutImage");
    // (299 100 + 587 50 + 114 10 + 500) / 1000 = 60; red gives 76.
    EXPECT_EQ(PackedPixel(doc, 1, 1), (PackedColour{60, 60, 60}.packed()));
    EXPECT_EQ(PackedPixel(doc, 0, 1), (PackedColour{76, 76, 76}.packed()));
    EXPECT_EQ(red(5, 0), 180) << "identity tables";
    ok("Wib_SetGrayscale", Params(1));  // only -1 is true
    EXPECT_EQ(answer("Wib_GetGrayscale").get().as<int>(), 0);
}

TEST_F(ColourMethods, TheTablesActThroughTheSelection) {
    doc.ABuffer.fill(0);
    doc.ABuffer.at(2, 0) = 255;
    doc.AlphaBitsFlag = 255;
    ok("Wib_Contrast", Params(-100));  // everything to mid grey
    ok("Wib_SetLutImage");
    EXPECT_EQ(red(2, 0), 128);
    EXPECT_EQ(red(4, 0), 144) << "outside the selection";
    EXPECT_EQ(red(0, 1), 255);
}

TEST_F(ColourMethods, DoHueTurnsTheImageAndLeavesGreys) {
    ok("Wib_DoHue", Params(120));
    EXPECT_EQ(PackedPixel(doc, 0, 1), (PackedColour{0, 255, 0}.packed()));
    EXPECT_EQ(PackedPixel(doc, 2, 1), (PackedColour{128, 128, 128}.packed()));
    ok("Wib_DoHue", Params(-240.0));
    EXPECT_EQ(PackedPixel(doc, 0, 1), (PackedColour{0, 0, 255}.packed()));
}

TEST_F(ColourMethods, AdjustColorAnswersThePackedResult) {
    EXPECT_EQ(answer("Wib_AdjustColor", Params(0x0000FF, 120, 0, 0)).get().as<int>(), 0x00FF00);
    // Lightness -50 halves each channel: 200 -> 100, 40 -> 20.
    EXPECT_EQ(answer("Wib_AdjustColor", Params(PackedColour{200, 40, 0}.packed(), 0.0, 0, -50))
                  .get()
                  .as<int>(),
              (PackedColour{100, 20, 0}.packed()));
    // No saturation leaves the value alone: pure red becomes white.
    EXPECT_EQ(answer("Wib_AdjustColor", Params(0x0000FF, 0, -100, 0)).get().as<int>(), 0xFFFFFF);
}

TEST_F(ColourMethods, BadArgumentsAreError5AndChangeNothing) {
    const Document before = doc;
    EXPECT_EQ(errorOf("Wib_Gamma", Params(0.05)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_Gamma", Params(std::string("2"))), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_Contrast", Params(101)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_Contrast", Params(1.5)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_DoHue", Params(361)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_AdjustColor", Params(0, 181, 0, 0)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_AdjustColor", Params(0, 0, 0, -101)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLutImage", Params(1)), kErrorBadCall);
    ok("Wib_SetLutImage");  // the tables are still the identity
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 8; ++x) {
            EXPECT_EQ(PackedPixel(doc, x, y), PackedPixel(before, x, y)) << x << "," << y;
        }
    }
}

}  // namespace
}  // namespace wib::testing
