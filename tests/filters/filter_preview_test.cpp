// SPDX-License-Identifier: GPL-3.0-or-later
// A preview shows, on the part of the image it covers, what the filter will do
// to those pixels when it is applied: window filters on a copy widened by
// their reach, position-dependent ones on the whole image, through the
// selection where there is one. The document itself is never touched.

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_commands.h"
#include "filters/filter_preview.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

bool SamePlane(const Plane& a, const Plane& b) {
    return a.sameShape(b) && std::memcmp(a.data(), b.data(), a.byteCount()) == 0;
}

class Preview : public ::testing::Test {
  protected:
    Preview() {
        host.newDocument(61, 43);
        host.workspace.threadCount = 2;
        RegisterFilterCommands(registry);
        std::mt19937 random(11);
        for (Plane* plane : {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer}) {
            for (int y = 0; y <= doc.height; ++y) {
                for (int x = 0; x <= doc.width; ++x) {
                    plane->at(x, y) = static_cast<std::uint8_t>(random() % 256);
                }
            }
        }
    }

    // The preview of `id` over `shown`, taken before anything runs.
    PreviewPixels preview(const std::string& id, const std::map<std::string, ParamValue>& given,
                          PixelRect shown) {
        const CommandSpec* command = registry.find(id);
        const FilterPreview* filter = PreviewOf(*command);
        EXPECT_NE(filter, nullptr) << id;
        auto values = registry.defaults(host.workspace, *command);
        for (const auto& [name, value] : given) {
            values[name] = value;
        }
        const ParamValues params(values);
        const int reach = filter->reach ? filter->reach(params) : -1;
        PreviewSource source = CopyPreviewSource(doc, host.workspace.random, shown, reach);
        return RunPreview(source, filter->kernel, params, host.workspace.host, 2);
    }

    // Applies the filter and compares every previewed pixel with the result.
    void expectSameAsApplied(const PreviewPixels& pixels, const std::string& id,
                             const std::map<std::string, ParamValue>& given) {
        ASSERT_EQ(registry.run(host.workspace, id, given).status, CommandOutcome::Status::Done);
        const PixelRect& s = pixels.shown;
        int differing = 0;
        for (int y = 0; y < s.height; ++y) {
            for (int x = 0; x < s.width; ++x) {
                differing += pixels.r.at(x, y) != doc.RBuffer.at(s.left + x, s.top + y);
                differing += pixels.g.at(x, y) != doc.GBuffer.at(s.left + x, s.top + y);
                differing += pixels.b.at(x, y) != doc.BBuffer.at(s.left + x, s.top + y);
            }
        }
        EXPECT_EQ(differing, 0) << id;
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(Preview, WindowFiltersOnTheWidenedCopyMatchTheAppliedResultInsideAndAtTheEdges) {
    const struct {
        std::string id;
        std::map<std::string, ParamValue> values;
        PixelRect shown;
    } cases[] = {
        {"filter.blur.box", {{"radius", 4LL}}, {17, 9, 20, 15}},
        {"filter.blur.box", {{"radius", 4LL}}, {0, 30, 12, 40}},  // clipped at the bottom
        {"filter.blur.gaussian", {{"sigma", 3.5}}, {40, 0, 21, 10}},
        {"filter.rank.median", {{"radius", 2LL}}, {5, 5, 30, 20}},
        {"filter.blur.motion", {{"angle", 30.0}, {"distance", 9LL}}, {20, 12, 15, 15}},
        {"filter.convolve",
         {{"kernel", IntegerList{1, 2, 3, 0, 1, 0, -1, -2, 5}}, {"divisor", 3LL}},
         {30, 20, 31, 23}},
        {"filter.colour.levels", {{"black", 20LL}, {"gamma", 1.6}}, {3, 3, 9, 9}},
    };
    for (const auto& c : cases) {
        const Plane r = doc.RBuffer, g = doc.GBuffer, b = doc.BBuffer;
        const PreviewPixels pixels = preview(c.id, c.values, c.shown);
        EXPECT_EQ(pixels.r.ubX(), pixels.shown.width) << c.id;
        EXPECT_TRUE(SamePlane(doc.RBuffer, r) && SamePlane(doc.GBuffer, g) &&
                    SamePlane(doc.BBuffer, b))
            << c.id << ": the preview wrote into the document";
        expectSameAsApplied(pixels, c.id, c.values);
        doc.RBuffer = r;
        doc.GBuffer = g;
        doc.BBuffer = b;
    }
}

TEST_F(Preview, ShownPartIsClippedToTheImageAndReachWidensTheCopyOnlyInside) {
    const PixelRect shown{50, -5, 30, 20};
    const PreviewSource source = CopyPreviewSource(doc, host.workspace.random, shown, 6);
    EXPECT_EQ(source.shown.left, 50);
    EXPECT_EQ(source.shown.top, 0);
    EXPECT_EQ(source.shown.width, 11);
    EXPECT_EQ(source.shown.height, 15);
    EXPECT_EQ(source.region.left, 44);
    EXPECT_EQ(source.region.top, 0);
    EXPECT_EQ(source.region.width, 17);
    EXPECT_EQ(source.region.height, 21);
    const PreviewSource whole = CopyPreviewSource(doc, host.workspace.random, shown, -1);
    EXPECT_EQ(whole.region.width, 61);
    EXPECT_EQ(whole.region.height, 43);
}

TEST_F(Preview, PositionDependentFiltersPreviewOnTheWholeImage) {
    for (const char* id : {"filter.distort.twirl", "filter.distort.pixelate"}) {
        const CommandSpec* command = registry.find(id);
        ASSERT_NE(command, nullptr) << id;
        ASSERT_NE(PreviewOf(*command), nullptr) << id;
        EXPECT_FALSE(PreviewOf(*command)->reach) << id;
        const Plane r = doc.RBuffer, g = doc.GBuffer, b = doc.BBuffer;
        expectSameAsApplied(preview(id, {}, {10, 10, 25, 20}), id, {});
        doc.RBuffer = r;
        doc.GBuffer = g;
        doc.BBuffer = b;
    }
}

TEST_F(Preview, NoiseShowsWhatApplyingWillDrawAndLeavesTheGeneratorAlone) {
    const std::mt19937 before = host.workspace.random;
    const PreviewPixels pixels = preview("filter.noise.add", {{"amount", 80LL}}, {0, 0, 61, 43});
    EXPECT_TRUE(host.workspace.random == before);
    expectSameAsApplied(pixels, "filter.noise.add", {{"amount", 80LL}});
}

TEST_F(Preview, ThroughTheSelectionTheResultIsBlendedAsApplyingDoes) {
    doc.AlphaBitsFlag = 255;
    for (int y = 0; y <= doc.height; ++y) {
        for (int x = 0; x <= doc.width; ++x) {
            doc.ABuffer.at(x, y) = static_cast<std::uint8_t>((x * 37 + y * 11) % 256);
        }
    }
    const std::map<std::string, ParamValue> values{{"brightness", 90LL}, {"contrast", 40LL}};
    const PreviewPixels pixels =
        preview("filter.colour.brightness_contrast", values, {8, 6, 30, 25});
    expectSameAsApplied(pixels, "filter.colour.brightness_contrast", values);
}

TEST_F(Preview, FiltersThatReadTheSwapImageHaveNoneAndCommandsOutsideFiltersNeither) {
    EXPECT_EQ(PreviewOf(*registry.find("filter.distort.displace")), nullptr);
    EXPECT_NE(PreviewOf(*registry.find("filter.colour.curves")), nullptr);
    const CommandSpec plain{"x.plain", "Plain", "Edit", "", {}, nullptr};
    EXPECT_EQ(PreviewOf(plain), nullptr);
}

}  // namespace
}  // namespace wib
