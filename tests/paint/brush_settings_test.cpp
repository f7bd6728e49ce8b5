// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "core/text_file.h"
#include "paint/brush_controls.h"
#include "paint/brush_settings_file.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

// Every control set to a random value inside its range.
BrushOptionsModel RandomOptions(std::uint32_t seed) {
    std::mt19937 random(seed);
    BrushOptionsModel options;
    for (const BrushControl& control : BrushControls()) {
        std::uniform_int_distribution<int> value(control.minimum, control.maximum);
        SetBrushControl(options, control, value(random));
    }
    return options;
}

std::vector<int> Values(const BrushOptionsModel& options) {
    std::vector<int> values;
    for (const BrushControl& control : BrushControls()) {
        values.push_back(control.get(options));
    }
    return values;
}

class BrushSettings : public ::testing::Test {
  protected:
    void SetUp() override {
        folder = std::filesystem::temp_directory_path() /
                 ("wib-brush-" +
                  std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::create_directories(folder);
        host.newDocument(40, 30);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
    testing::TestHost host;
};

TEST_F(BrushSettings, RoundTripLeavesEveryControlAsItWas) {
    PaintSession session(host.workspace, folder);
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        session.state().options = RandomOptions(seed);
        session.setBrushType(static_cast<int>(seed % 3));
        const auto before = Values(session.state().options);
        const std::string path = session.writeBrushSettings();
        ASSERT_EQ(std::filesystem::file_size(path), 176u);
        session.state().options = BrushOptionsModel{};
        ASSERT_TRUE(session.readBrushSettings(path));
        EXPECT_EQ(Values(session.state().options), before) << "seed " << seed;
        EXPECT_EQ(static_cast<int>(session.brushType()), static_cast<int>(seed % 3))
            << "the brush type is not part of the record";
    }
}

// The record's layout, written out here: each field's byte offset, a change
// of one option, and the value the field then holds.
struct FieldCase {
    int offset;
    void (*change)(BrushOptionsModel&);
    std::int32_t value;
};
const FieldCase kLayout[] = {
    {0, [](BrushOptionsModel& o) { o.transformQuality = 2; }, 2},
    {4, [](BrushOptionsModel& o) { o.pressureToSize = false; }, 0},
    {8, [](BrushOptionsModel& o) { o.pressureToOpacity = true; }, 1},
    {12, [](BrushOptionsModel& o) { o.speedToSize = -7; }, -7},
    {16, [](BrushOptionsModel& o) { o.brushSize = 200; }, 200},
    {20, [](BrushOptionsModel& o) { o.sizeJitter = 30; }, 30},
    {24, [](BrushOptionsModel& o) { o.angleJitter = 170; }, 170},
    {28, [](BrushOptionsModel& o) { o.followStroke = true; }, 1},
    {32, [](BrushOptionsModel& o) { o.hueJitter = 300; }, 300},
    {36, [](BrushOptionsModel& o) { o.saturationJitter = 90; }, 90},
    {40, [](BrushOptionsModel& o) { o.valueJitter = 80; }, 80},
    {44, [](BrushOptionsModel& o) { o.colourPickUp = 250; }, 250},
    {48, [](BrushOptionsModel& o) { o.dryOut = 380; }, 380},
    {52, [](BrushOptionsModel& o) { o.alphaUse = AlphaUse::IgnoreSelection; }, 2},
    {56, [](BrushOptionsModel& o) { o.imageBrushTransform = true; }, 1},
    {60, [](BrushOptionsModel& o) { o.opacity = 77; }, 77},
    {64, [](BrushOptionsModel& o) { o.spacing = 450; }, 450},
    {68, [](BrushOptionsModel& o) { o.baseAngle = 359; }, 359},
    {72, [](BrushOptionsModel& o) { o.imageBrushScale = 399; }, 399},
    {76, [](BrushOptionsModel& o) { o.relativeSpacing = false; }, 0},
    {80, [](BrushOptionsModel& o) { o.livePreview = false; }, 0},
    {84, [](BrushOptionsModel& o) { o.paperTexture = true; }, 1},
    {88, [](BrushOptionsModel& o) { o.fade = 254; }, 254},
    {92, [](BrushOptionsModel& o) { o.mirrorLeftRight = true; }, 1},
    {96, [](BrushOptionsModel& o) { o.mirrorTopBottom = true; }, 1},
    {100, [](BrushOptionsModel& o) { o.radialSymmetry = true; }, 1},
    {104, [](BrushOptionsModel& o) { o.radialCopies = 9; }, 9},
    {108, [](BrushOptionsModel& o) { o.symmetryCentreX = 13; }, 13},
    {112, [](BrushOptionsModel& o) { o.symmetryCentreY = 87; }, 87},
    {116, [](BrushOptionsModel& o) { o.cloneAligned = false; }, 0},
    {120, [](BrushOptionsModel& o) { o.builtinBrush = 3; }, 3},
    {124, [](BrushOptionsModel& o) { o.paintMode = 11; }, 11},
    {128, [](BrushOptionsModel& o) { o.hardness = 5; }, 5},
    {132, [](BrushOptionsModel& o) { o.bristles = 63; }, 63},
    {136, [](BrushOptionsModel& o) { o.brushScaleThousandths = 3999; }, 3999},
    {140, [](BrushOptionsModel& o) { o.eraseToSecondary = false; }, 0},
    {144, [](BrushOptionsModel& o) { o.pickUpIgnoresAlpha = true; }, 1},
    {156, [](BrushOptionsModel& o) { o.paperStrength = 42; }, 42},
    {160, [](BrushOptionsModel& o) { o.paperInvert = true; }, 1},
    {164, [](BrushOptionsModel& o) { o.paperShiftPerDab = true; }, 1},
    {168, [](BrushOptionsModel& o) { o.paperEmboss = true; }, 1},
    {172, [](BrushOptionsModel& o) { o.paperScale = 333; }, 333},
};

std::string FileBytes(const std::filesystem::path& folder, const BrushOptionsModel& options) {
    std::string error;
    const auto path = WriteBrushSettingsFile(folder, PackBrushSettings(options), error);
    return path ? ReadTextFile(*path).value_or("") : "";
}

TEST_F(BrushSettings, EachFieldIsFourLittleEndianBytesAtItsOffset) {
    const std::string plain = FileBytes(folder, BrushOptionsModel{});
    ASSERT_EQ(plain.size(), 176u);
    BrushOptionsModel all;
    for (const FieldCase& field : kLayout) {
        BrushOptionsModel options;
        field.change(options);
        field.change(all);
        const std::string changed = FileBytes(folder, options);
        ASSERT_EQ(changed.size(), 176u);
        const auto at = static_cast<std::size_t>(field.offset);
        EXPECT_EQ(changed.substr(0, at), plain.substr(0, at)) << "offset " << field.offset;
        EXPECT_EQ(changed.substr(at + 4), plain.substr(at + 4)) << "offset " << field.offset;
        std::uint32_t value = 0;
        for (std::size_t b = 0; b < 4; ++b) {
            value |= static_cast<std::uint32_t>(static_cast<unsigned char>(changed[at + b]))
                     << (8 * b);
        }
        EXPECT_EQ(static_cast<std::int32_t>(value), field.value) << "offset " << field.offset;
    }
    // The two reserved fields stay 0 whatever the options.
    EXPECT_EQ(FileBytes(folder, all).substr(148, 8), std::string(8, '\0'));
}

TEST_F(BrushSettings, OutOfRangeValuesPressNoButtonOrClamp) {
    BrushOptionsModel options;
    options.transformQuality = 1;
    options.alphaUse = AlphaUse::PaintOnAlpha;
    options.livePreview = true;
    auto record = PackBrushSettings(options);
    record[0] = 7;
    record[13] = 0;
    record[4] = 100000;
    record[3] = -99;
    record[7] = 5;
    record[20] = 0;
    UnpackBrushSettings(record, options);
    EXPECT_EQ(options.transformQuality, 1) << "no quality button pressed";
    EXPECT_EQ(options.alphaUse, AlphaUse::PaintOnAlpha) << "field 13 = 0 presses no button";
    EXPECT_EQ(options.brushSize, 256);
    EXPECT_EQ(options.speedToSize, -25);
    EXPECT_TRUE(options.followStroke);
    EXPECT_FALSE(options.livePreview);

    record[13] = 2;
    UnpackBrushSettings(record, options);
    EXPECT_EQ(options.alphaUse, AlphaUse::IgnoreSelection) << "2 presses kq_button2";
}

TEST_F(BrushSettings, ARecordThatCannotBeWrittenIsReportedWithTheReason) {
    PaintSession session(host.workspace, folder / "gone");
    EXPECT_EQ(session.writeBrushSettings(), "");
    EXPECT_EQ(host.prompter.messages,
              std::vector<std::string>{"The brush settings could not be written to " +
                                       (folder / "gone" / "WT_BrushSettings.dat").string() +
                                       ": No such file or directory"});
}

TEST_F(BrushSettings, MissingOrShortFilesAreReportedAndChangeNothing) {
    PaintSession session(host.workspace, folder);
    session.state().options.brushSize = 33;
    EXPECT_FALSE(session.readBrushSettings((folder / "none.dat").string()));
    WriteTextFile(folder / "short.dat", std::string(100, '\x01'));
    EXPECT_FALSE(session.readBrushSettings((folder / "short.dat").string()));
    ASSERT_EQ(host.prompter.messages.size(), 2u);
    EXPECT_NE(host.prompter.messages[1].find("too short"), std::string::npos);
    EXPECT_EQ(session.state().options.brushSize, 33);
    EXPECT_FALSE(session.setBrushType(3));
}

TEST_F(BrushSettings, BrushFromSelectionTakesTheSelectedBoxAndItsMatte) {
    PaintSession session(host.workspace, folder);
    Document& doc = host.workspace.document;
    doc.ABuffer.fill(0);
    EXPECT_FALSE(session.makeBrushFromSelection());
    doc.ABuffer.at(5, 6) = 255;
    doc.ABuffer.at(7, 9) = 100;
    doc.RBuffer.at(7, 9) = 42;
    ASSERT_TRUE(session.makeBrushFromSelection());
    const BrushImage& brush = host.workspace.brush;
    EXPECT_EQ(brush.mask().stride(), 3u);
    EXPECT_EQ(brush.mask().rows(), 4u);
    EXPECT_EQ(brush.mask().at(0, 0), 0);
    EXPECT_EQ(brush.mask().at(2, 3), 155);
    EXPECT_EQ(brush.R.at(2, 3), 42);
    EXPECT_TRUE(brush.active());
    session.chooseBuiltinBrush(BuiltinBrush::Chalk);
    EXPECT_FALSE(brush.active());
}

}  // namespace
}  // namespace wib
