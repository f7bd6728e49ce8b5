// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/document_commands.h"
#include "core/interface_lock.h"
#include "core/undo.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class DocumentCommands : public ::testing::Test {
  protected:
    void SetUp() override {
        RegisterDocumentCommands(registry);
        host.newDocument(10, 10);
    }
    CommandOutcome run(const std::string& id, std::map<std::string, ParamValue> params = {}) {
        return registry.run(host.workspace, id, params);
    }
    CommandRegistry registry;
    testing::TestHost host;
    Document& doc = host.workspace.document;
};

TEST_F(DocumentCommands, NewTakesItsSizeFromParamsThenPreferencesThenTheDefault) {
    EXPECT_EQ(run("file.new", {{"width", 32LL}, {"height", 16.0}}).status, Status::Done);
    EXPECT_EQ(doc.width, 32);
    EXPECT_EQ(doc.height, 16);
    EXPECT_EQ(run("file.new").status, Status::Done);
    EXPECT_EQ(doc.width, 640);
    EXPECT_EQ(doc.height, 480);
    host.preferences.setValue("Settings", "NewWidth", "100");
    host.preferences.setValue("Settings", "NewHeight", "junk");
    EXPECT_EQ(run("file.new").status, Status::Done);
    EXPECT_EQ(doc.width, 100);
    EXPECT_EQ(doc.height, 480);
}

TEST_F(DocumentCommands, BadParametersAreRefusedBeforeAnythingChanges) {
    SetPixel(doc, 0, 0, {1, 2, 3});
    const std::map<std::string, ParamValue> bad[] = {
        {{"width", 0LL}}, {{"width", 20000LL}}, {{"width", 12.5}}, {{"width", std::string("wide")}},
        {{"depth", 3LL}}, {{"anchor", 9LL}},    {{"fill", -1LL}},  {{"fill", 16777216LL}}};
    for (const auto& params : bad) {
        const auto outcome = run("image.canvas_size", params);
        EXPECT_EQ(outcome.status, Status::BadParameter) << outcome.error;
        EXPECT_FALSE(outcome.error.empty());
    }
    EXPECT_EQ(run("no.such.command").status, Status::UnknownCommand);
    EXPECT_EQ(doc.width, 10);
    EXPECT_EQ(PackedPixel(doc, 0, 0), 197121);
}

TEST_F(DocumentCommands, CanvasSizeDefaultsToTheCurrentSizeCentredOnWhite) {
    EXPECT_EQ(run("image.canvas_size", {{"width", 14LL}}).status, Status::Done);
    EXPECT_EQ(doc.width, 14);
    EXPECT_EQ(doc.height, 10);
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0xFFFFFF);

    ClearImage(doc, {0, 0, 0});
    EXPECT_EQ(
        run("image.canvas_size", {{"width", 16LL}, {"anchor", 0LL}, {"fill", 0x030201LL}}).status,
        Status::Done);
    EXPECT_EQ(PackedPixel(doc, 0, 0), 0);
    EXPECT_EQ(doc.RBuffer.at(15, 0), 1);
    EXPECT_EQ(doc.BBuffer.at(15, 0), 3);
}

TEST_F(DocumentCommands, UndoAndRedoReportWhenThereIsNothingToDo) {
    EXPECT_EQ(run("edit.redo").status, Status::Refused);
    SaveUndo(host.workspace);
    ClearImage(doc, {9, 9, 9});
    EXPECT_EQ(run("edit.undo").status, Status::Done);
    EXPECT_EQ(doc.RBuffer.at(1, 1), 255);
    EXPECT_EQ(run("edit.redo").status, Status::Done);
    EXPECT_EQ(doc.RBuffer.at(1, 1), 9);
}

TEST_F(DocumentCommands, RunAskingShowsTheDialogTheStartingValuesAndHonoursCancel) {
    std::vector<std::string> asked;
    long long shownWidth = 0;
    bool accept = false;
    registry.setDialog([&](const CommandSpec& command, auto& values) {
        asked.push_back(command.id);
        shownWidth = std::get<long long>(values.at("width"));
        values["width"] = 24LL;
        return accept;
    });
    EXPECT_EQ(registry.runAsking(host.workspace, "image.canvas_size").status, Status::Cancelled);
    EXPECT_EQ(shownWidth, 10);
    EXPECT_EQ(doc.width, 10);
    accept = true;
    EXPECT_EQ(registry.runAsking(host.workspace, "image.canvas_size").status, Status::Done);
    EXPECT_EQ(doc.width, 24);
    // A command without parameters runs without a dialog.
    EXPECT_EQ(registry.runAsking(host.workspace, "edit.undo").status, Status::Done);
    EXPECT_EQ(asked, (std::vector<std::string>{"image.canvas_size", "image.canvas_size"}));
    EXPECT_EQ(registry.runAsking(host.workspace, "no.such.command").status, Status::UnknownCommand);

    // Without a dialog the starting values are taken.
    registry.setDialog(nullptr);
    EXPECT_EQ(registry.runAsking(host.workspace, "file.new").status, Status::Done);
    EXPECT_EQ(doc.width, 640);
}

TEST(CommandRegistryObservers, HearEveryAddUntilForgottenAndMayAddCommandsWhileRunning) {
    CommandRegistry registry;
    int told = 0;
    Subscription listening = registry.changed.subscribe([&told] { ++told; });
    registry.add({"a.one", "One", "Filter", "", {}, nullptr});
    registry.add({"a.one", "One again", "Filter", "", {}, nullptr});
    EXPECT_EQ(told, 2);
    EXPECT_EQ(registry.all().size(), 1u);
    EXPECT_EQ(registry.find("a.one")->caption, "One again");
    listening.reset();

    // A command that fills the table as it runs (a plug-in listing) moves
    // the table under its own feet.
    registry.add(
        {"a.list", "List", "Plug-ins", "", {}, [&registry](Workspace&, const ParamValues&) {
             for (int i = 0; i < 50; ++i) {
                 registry.add({"plugin.misc." + std::to_string(i),
                               "P",
                               "Plug-ins",
                               "",
                               {},
                               [](Workspace&, const ParamValues&) { return true; }});
             }
             return true;
         }});
    testing::TestHost host;
    EXPECT_EQ(registry.run(host.workspace, "a.list", {}).status, Status::Done);
    EXPECT_EQ(registry.all().size(), 52u);
    EXPECT_EQ(told, 2);
}

// A row that says it changes the image gets the whole bracket from the
// runner; one that does not is run as it is.
TEST(CommandRegistryBracket, ImageCommandsRunInTheEditBracket) {
    testing::TestHost host;
    host.newDocument(4, 4);
    CommandRegistry registry;
    const auto darken = [](Workspace& workspace, const ParamValues&) {
        workspace.document.RBuffer.fill(7);
        return true;
    };
    registry.add({.id = "filter.darken",
                  .caption = "Darken",
                  .menu = "Filter",
                  .run = darken,
                  .changesImage = true,
                  .repeatQuestion = "Apply filter to all frames?"});
    registry.add({"test.plain", "Plain", "Filter", "", {}, darken});

    EXPECT_EQ(registry.run(host.workspace, "test.plain", {}).status, Status::Done);
    EXPECT_FALSE(host.workspace.document.modified);

    host.workspace.document.RBuffer.fill(90);
    EXPECT_EQ(registry.run(host.workspace, "filter.darken", {}).status, Status::Done);
    EXPECT_TRUE(host.workspace.document.modified);
    EXPECT_EQ(host.view.pointerShapes, (std::vector<int>{kBusyPointerShape, 0}));
    EXPECT_TRUE(host.prompter.questions.empty()) << "no animation, no question";
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 90);
}

TEST(CheckParam, AChoiceIsTakenByPositionOrByItsCaptionInAnyCase) {
    ParamSpec anchor;
    anchor.name = "anchor";
    anchor.type = ParamType::Choice;
    anchor.choices = {"Top &left", "Centre", "Bottom right"};
    std::string error;
    EXPECT_EQ(CheckParam(anchor, std::string("centre"), error), ParamValue{1LL});
    EXPECT_EQ(CheckParam(anchor, std::string("TOP LEFT"), error), ParamValue{0LL});
    EXPECT_EQ(CheckParam(anchor, 2LL, error), ParamValue{2LL});
    EXPECT_FALSE(CheckParam(anchor, std::string("middle"), error));
    EXPECT_EQ(error, "anchor has no choice middle");
    EXPECT_FALSE(CheckParam(anchor, 3LL, error));
}

}  // namespace
}  // namespace wib
