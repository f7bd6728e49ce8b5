#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/document_commands.h"
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

}  // namespace
}  // namespace wib
