// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "app/brush_file_commands.h"
#include "core/commands.h"
#include "fileio/bitmap_reader.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

TEST(BrushFileCommands, ABitmapBecomesTheCurrentImageBrush) {
    testing::TestHost host;
    host.newDocument(6, 4);
    SetPixel(host.workspace.document, 2, 1, {7, 8, 9});
    const auto file = std::filesystem::temp_directory_path() / "wib-brush-command.bmp";
    ASSERT_TRUE(SaveBMP(host.workspace, file.string()));

    PaintSession paint(host.workspace, std::filesystem::temp_directory_path());
    CommandRegistry commands;
    RegisterBrushFileCommands(commands, paint);
    const auto outcome = commands.run(host.workspace, "brush.load", {{"path", file.string()}});
    EXPECT_EQ(outcome.status, CommandOutcome::Status::Done);
    EXPECT_TRUE(host.workspace.brush.active());
    EXPECT_EQ(host.workspace.brush.R.at(2, 1), 7);

    const auto missing =
        commands.run(host.workspace, "brush.load", {{"path", std::string("/no/such.tga")}});
    EXPECT_EQ(missing.status, CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages.size(), 1u);
    std::filesystem::remove(file);
}

}  // namespace
}  // namespace wib
