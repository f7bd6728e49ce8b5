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

TEST_F(BrushSettings, RecordFieldsSitAtTheirOffsets) {
    BrushOptionsModel options;
    options.transformQuality = 2;
    options.speedToSize = -7;
    options.alphaUse = AlphaUse::IgnoreSelection;
    options.paperScale = 150;
    const auto record = PackBrushSettings(options);
    EXPECT_EQ(record[0], 2);
    EXPECT_EQ(record[3], -7);
    EXPECT_EQ(record[13], 2);
    EXPECT_EQ(record[37], 0);
    EXPECT_EQ(record[38], 0);
    EXPECT_EQ(record[43], 150);
    const auto path = WriteBrushSettingsFile(folder, record);
    ASSERT_TRUE(path);
    const std::string bytes = *ReadTextFile(*path);
    ASSERT_EQ(bytes.size(), 176u);
    EXPECT_EQ(static_cast<unsigned char>(bytes[12]), 0xF9) << "-7, little-endian";
    EXPECT_EQ(static_cast<unsigned char>(bytes[15]), 0xFF);
    EXPECT_EQ(static_cast<unsigned char>(bytes[172]), 150);
}

TEST_F(BrushSettings, OutOfRangeValuesPressNoButtonOrClamp) {
    BrushOptionsModel options;
    options.transformQuality = 1;
    options.alphaUse = AlphaUse::PaintOnAlpha;
    options.livePreview = true;
    auto record = PackBrushSettings(options);
    record[0] = 7;
    record[13] = -3;
    record[4] = 100000;
    record[3] = -99;
    record[7] = 5;
    record[20] = 0;
    UnpackBrushSettings(record, options);
    EXPECT_EQ(options.transformQuality, 1) << "no quality button pressed";
    EXPECT_EQ(options.alphaUse, AlphaUse::PaintOnAlpha);
    EXPECT_EQ(options.brushSize, 256);
    EXPECT_EQ(options.speedToSize, -25);
    EXPECT_TRUE(options.followStroke);
    EXPECT_FALSE(options.livePreview);
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

namespace wib {
namespace {

TEST(CloneSource, StrokesCopyFromTheSourceAlignedOrAfresh) {
    testing::TestHost host;
    host.newDocument(60, 40);
    Document& doc = host.workspace.document;
    for (int x = 0; x < 60; ++x) {
        for (int y = 0; y < 40; ++y) {
            SetPixel(doc, x, y,
                     {static_cast<std::uint8_t>(x * 4), static_cast<std::uint8_t>(y * 6), 0});
        }
    }
    PaintSession session(host.workspace, std::filesystem::temp_directory_path());
    session.state().options.paintMode = static_cast<int>(PaintMode::Clone);
    session.state().options.brushSize = 3;
    session.state().options.hardness = 100;
    // Every position lays a dab, so each click paints whatever the spacing
    // counter carried over from the stroke before.
    session.state().options.relativeSpacing = false;
    session.state().options.spacing = 0;
    session.optionsChanged();

    session.setCloneSource(5, 5);
    session.penPress(1, 30, 20, 1.0, false);
    session.penRelease(30, 20);
    EXPECT_EQ(doc.RBuffer.at(30, 20), 5 * 4) << "the pixel at the source";
    EXPECT_EQ(doc.GBuffer.at(30, 20), 5 * 6);

    // Aligned: the next stroke keeps the offset (25, 15).
    session.penPress(1, 40, 30, 1.0, false);
    session.penRelease(40, 30);
    EXPECT_EQ(doc.RBuffer.at(40, 30), 15 * 4);

    // Not aligned: every stroke starts again from the source.
    session.state().options.cloneAligned = false;
    session.penPress(1, 50, 10, 1.0, false);
    session.penRelease(50, 10);
    EXPECT_EQ(doc.RBuffer.at(50, 10), 5 * 4);
    EXPECT_EQ(doc.GBuffer.at(50, 10), 5 * 6);
}

}  // namespace
}  // namespace wib
