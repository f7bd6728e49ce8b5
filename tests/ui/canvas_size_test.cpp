// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QComboBox>
#include <QSpinBox>
#include <filesystem>

#include "core/text_file.h"
#include "ui/canvas_size.h"
#include "ui/qt_controls.h"

namespace wib {
namespace {

std::filesystem::path PresetFile() {
    const auto file = std::filesystem::temp_directory_path() / "wib-ui-presets.txt";
    WriteTextFile(file, "\"Wide, short\",300,20\nTall,20,300\nBroken,x,1\nNever,1,1\n");
    return file;
}

TEST(CanvasSizeDialog, PresetsFillTheSizeFields) {
    CanvasSize dialog(CanvasSize::Purpose::NewDocument, PresetFile(), nullptr);
    auto* presets = dialog.findChild<QComboBox*>("PresetList");
    ASSERT_NE(presets, nullptr);
    ASSERT_EQ(presets->count(), 3) << "Custom plus the two readable presets";
    EXPECT_EQ(presets->itemText(1), "Wide, short");
    presets->setCurrentIndex(2);
    const auto values = dialog.values();
    EXPECT_EQ(std::get<long long>(values.at("width")), 20);
    EXPECT_EQ(std::get<long long>(values.at("height")), 300);
    EXPECT_EQ(values.count("anchor"), 0u) << "a new image has no anchor";
}

TEST(CanvasSizeDialog, ControlsAreReachableByNameAndRunTheirHandlers) {
    CanvasSize dialog(CanvasSize::Purpose::ChangeCanvas, PresetFile(), nullptr);
    dialog.setValues({{"width", 50LL}, {"height", 40LL}, {"anchor", 8LL}, {"fill", 0x0000FFLL}});
    QtControls controls;
    EXPECT_EQ(std::get<long long>(*controls.get("CanvasSize", "WidthText")), 50);
    EXPECT_EQ(std::get<long long>(*controls.get("CanvasSize", "Anchor8")), -1);
    EXPECT_EQ(std::get<long long>(*controls.get("CanvasSize", "Anchor4")), 0);

    EXPECT_TRUE(controls.set("CanvasSize", "PresetList", ParamValue{1LL}));
    EXPECT_TRUE(controls.set("CanvasSize", "Anchor0", ParamValue{-1LL}));
    auto values = dialog.values();
    EXPECT_EQ(std::get<long long>(values.at("width")), 300) << "the preset handler ran";
    EXPECT_EQ(std::get<long long>(values.at("anchor")), 0);
    EXPECT_EQ(std::get<long long>(values.at("fill")), 0x0000FF);

    EXPECT_FALSE(controls.set("CanvasSize", "WidthText", ParamValue{0LL}));
    EXPECT_FALSE(controls.set("CanvasSize", "WidthText", ParamValue{std::string("wide")}));
    EXPECT_FALSE(controls.set("CanvasSize", "PresetList", ParamValue{7LL}));
    EXPECT_FALSE(controls.set("CanvasSize", "NoSuchControl", ParamValue{1LL}));
    EXPECT_FALSE(controls.get("NoSuchPanel", "WidthText").has_value());
    EXPECT_EQ(std::get<long long>(dialog.values().at("width")), 300);
}

}  // namespace
}  // namespace wib
