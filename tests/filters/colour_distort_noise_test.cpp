// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "filters/colour_filters.h"
#include "filters/distort_filters.h"
#include "filters/noise_filters.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class ColourDistortNoise : public ::testing::Test {
  protected:
    ColourDistortNoise() {
        RegisterColourFilters(registry);
        RegisterDistortFilters(registry);
        RegisterNoiseFilters(registry);
        open(4, 3);
    }
    void open(int width, int height) {
        host.newDocument(width, height);
        std::mt19937 random(static_cast<unsigned>(width * 31 + height));
        for (Plane* plane : {&doc().RBuffer, &doc().GBuffer, &doc().BBuffer}) {
            for (std::size_t i = 0; i < plane->count(); ++i) {
                plane->data()[i] = static_cast<std::uint8_t>(random());
            }
        }
    }
    Document& doc() { return host.workspace.document; }
    CommandOutcome run(const std::string& id, std::map<std::string, ParamValue> values = {}) {
        return registry.run(host.workspace, id, values);
    }
    // The three planes, spare column and row included.
    std::vector<std::uint8_t> planes() {
        std::vector<std::uint8_t> all;
        for (const Plane* plane : {&doc().RBuffer, &doc().GBuffer, &doc().BBuffer}) {
            all.insert(all.end(), plane->data(), plane->data() + plane->count());
        }
        return all;
    }
    // Puts back planes taken by planes().
    void restore(const std::vector<std::uint8_t>& all) {
        const std::uint8_t* from = all.data();
        for (Plane* plane : {&doc().RBuffer, &doc().GBuffer, &doc().BBuffer}) {
            std::copy(from, from + plane->count(), plane->data());
            from += plane->count();
        }
    }
    testing::TestHost host;
    CommandRegistry registry;
};

TEST_F(ColourDistortNoise, FixedFormulasThroughTheCommandTable) {
    SetPixel(doc(), 0, 0, {10, 200, 77});
    SetPixel(doc(), 1, 0, {0, 1, 0});
    SetPixel(doc(), 2, 0, {100, 64, 191});
    const std::uint8_t spare = doc().RBuffer.at(4, 0);

    ASSERT_EQ(run("filter.colour.invert").status, Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 0, 0), (PackedColour{245, 55, 178}.packed()));
    EXPECT_EQ(doc().RBuffer.at(4, 0), spare) << "the spare column is not image";
    ASSERT_EQ(run("filter.colour.invert").status, Status::Done);

    ASSERT_EQ(run("filter.colour.posterize", {{"levels", 3LL}}).status, Status::Done);
    // 100 x 2 / 255 = 0.78 -> 1 -> 127.5 -> 128; 64 -> 0.502 -> 1 -> 128;
    // 191 -> 1.498 -> 1 -> 128.
    EXPECT_EQ(PackedPixel(doc(), 2, 0), (PackedColour{128, 128, 128}.packed()));
    SetPixel(doc(), 2, 0, {100, 64, 191});

    ASSERT_EQ(run("filter.colour.threshold", {{"level", 129LL}}).status, Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 0, 0), 0xFFFFFF) << "grey 129 of 129668 / 1000";
    EXPECT_EQ(PackedPixel(doc(), 2, 0), 0) << "grey 97";

    SetPixel(doc(), 0, 0, {10, 200, 77});
    SetPixel(doc(), 1, 0, {0, 1, 0});

    ASSERT_EQ(run("filter.colour.greyscale").status, Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 0, 0), (PackedColour{129, 129, 129}.packed()));
    EXPECT_EQ(PackedPixel(doc(), 1, 0), (PackedColour{1, 1, 1}.packed())) << "587 + 500";
}

TEST_F(ColourDistortNoise, BadParametersAreRefusedAndNothingChanges) {
    const auto before = planes();
    const std::pair<const char*, std::map<std::string, ParamValue>> bad[] = {
        {"filter.colour.posterize", {{"levels", 1LL}}},
        {"filter.colour.threshold", {{"level", 256LL}}},
        {"filter.colour.gamma", {{"gamma", std::string("bright")}}},
        {"filter.colour.levels", {{"gamma", 0.0}}},
        {"filter.distort.pixelate", {{"size", 2.5}}},
        {"filter.distort.polar", {{"direction", 2LL}}},
        {"filter.noise.add", {{"amount", -1LL}}},
    };
    for (const auto& [id, values] : bad) {
        const CommandOutcome outcome = run(id, values);
        EXPECT_EQ(outcome.status, Status::BadParameter) << id;
        EXPECT_NE(outcome.error.find(values.begin()->first), std::string::npos) << outcome.error;
    }
    EXPECT_EQ(planes(), before);
    EXPECT_FALSE(doc().modified);
}

TEST_F(ColourDistortNoise, FiltersActThroughTheSelection) {
    doc().AlphaBitsFlag = 255;
    doc().ABuffer.at(1, 1) = 0;
    doc().ABuffer.at(2, 1) = 255;
    SetPixel(doc(), 1, 1, {1, 2, 3});
    SetPixel(doc(), 2, 1, {1, 2, 3});
    for (const char* id : {"filter.colour.invert", "filter.colour.sepia", "filter.noise.add",
                           "filter.distort.twirl"}) {
        ASSERT_EQ(run(id).status, Status::Done) << id;
        EXPECT_EQ(PackedPixel(doc(), 1, 1), (PackedColour{1, 2, 3}.packed())) << id;
        ASSERT_TRUE(EditUndo(host.workspace));
    }
    ASSERT_EQ(run("filter.colour.invert").status, Status::Done);
    EXPECT_EQ(PackedPixel(doc(), 2, 1), (PackedColour{254, 253, 252}.packed()));
}

TEST_F(ColourDistortNoise, EveryFilterRunsOnTinyImagesAndKeepsTheSpareRow) {
    for (const auto& [w, h] : {std::pair{1, 1}, std::pair{1, 6}, std::pair{7, 1}}) {
        open(w, h);
        for (const CommandSpec& command : registry.all()) {
            const std::uint8_t spareColumn = doc().GBuffer.at(w, 0);
            const std::uint8_t spareRow = doc().BBuffer.at(0, h);
            ASSERT_EQ(run(command.id).status, Status::Done) << command.id;
            EXPECT_EQ(doc().GBuffer.at(w, 0), spareColumn) << command.id;
            EXPECT_EQ(doc().BBuffer.at(0, h), spareRow) << command.id;
        }
    }
}

TEST_F(ColourDistortNoise, ResultsDoNotDependOnTheBandCount) {
    open(37, 23);
    doc().SwapR.at(5, 5) = 250;
    doc().SwapG.at(9, 12) = 3;
    const auto original = planes();
    for (const CommandSpec& command : registry.all()) {
        host.workspace.threadCount = 1;
        host.workspace.seedRandom(11);
        ASSERT_EQ(run(command.id).status, Status::Done);
        const auto single = planes();
        restore(original);
        host.workspace.threadCount = 5;
        host.workspace.seedRandom(11);
        ASSERT_EQ(run(command.id).status, Status::Done);
        EXPECT_EQ(planes(), single) << command.id;
        restore(original);
    }
}

TEST_F(ColourDistortNoise, NoiseRepeatsUnderASeedAndDiffersWithout) {
    open(20, 10);
    host.workspace.seedRandom(99);
    ASSERT_EQ(run("filter.noise.add", {{"amount", 40LL}}).status, Status::Done);
    const auto first = planes();
    ASSERT_TRUE(EditUndo(host.workspace));
    const auto original = planes();
    EXPECT_NE(first, original);
    host.workspace.seedRandom(99);
    ASSERT_EQ(run("filter.noise.add", {{"amount", 40LL}}).status, Status::Done);
    EXPECT_EQ(planes(), first);
    ASSERT_TRUE(EditUndo(host.workspace));
    ASSERT_EQ(run("filter.noise.add", {{"amount", 40LL}}).status, Status::Done);
    EXPECT_NE(planes(), first) << "the generator moved on";
}

TEST_F(ColourDistortNoise, EqualizeAndDisplaceUseTheWholeImage) {
    open(2, 2);
    SetPixel(doc(), 0, 0, {10, 10, 10});
    SetPixel(doc(), 1, 0, {20, 20, 20});
    SetPixel(doc(), 0, 1, {30, 30, 30});
    SetPixel(doc(), 1, 1, {30, 30, 30});
    ASSERT_EQ(run("filter.colour.equalize").status, Status::Done);
    EXPECT_EQ(doc().RBuffer.at(0, 0), 0);
    EXPECT_EQ(doc().RBuffer.at(1, 0), 85);
    EXPECT_EQ(doc().RBuffer.at(1, 1), 255);

    // Red 255 in the swap image moves the source 127 / 128 of 100 pixels
    // right, clamped to the right column.
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) {
            doc().SwapR.at(x, y) = 255;
            doc().SwapG.at(x, y) = 128;
        }
    }
    ASSERT_EQ(run("filter.distort.displace", {{"amount", 100LL}}).status, Status::Done);
    EXPECT_EQ(doc().RBuffer.at(0, 0), 85);
    EXPECT_EQ(doc().RBuffer.at(0, 1), 255);
}

TEST_F(ColourDistortNoise, RowsSitInTheirMenus) {
    int colour = 0, distort = 0, noise = 0;
    for (const CommandSpec& command : registry.all()) {
        colour += command.menu == "Filter/Colour";
        distort += command.menu == "Filter/Distort";
        noise += command.menu == "Filter/Noise";
        EXPECT_TRUE(command.changesImage) << command.id;
        EXPECT_FALSE(command.repeatQuestion.empty()) << command.id;
    }
    EXPECT_EQ(colour, 14);
    EXPECT_EQ(distort, 7);
    EXPECT_EQ(noise, 2);
    EXPECT_EQ(registry.find("filter.colour.tritone")->repeatQuestion,
              "Apply Tritone filter to all frames?");
}

}  // namespace
}  // namespace wib
