// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/discard_question.h"

#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/document_commands.h"
#include "core/image_edit.h"
#include "core/workspace.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;
constexpr int kSave = 1;
constexpr int kDontSave = 2;
constexpr int kCancel = 3;

// File > New on a modified document, with a stand-in File > Save that
// succeeds or fails as the test says.
class DiscardQuestion : public ::testing::Test {
  protected:
    void SetUp() override {
        RegisterDocumentCommands(registry);
        registry.add({"file.save_current",
                      "Save",
                      "File",
                      "",
                      {},
                      [this](Workspace& workspace, const ParamValues&) {
                          ++saves;
                          if (saveWorks) {
                              SetModified(workspace, false);
                          }
                          return saveWorks;
                      }});
        host.newDocument(10, 10);
        doc.FileName = "/some/folder/picture.tga";
        SetModified(host.workspace, true);
    }
    Status newDocument() {
        return registry.run(host.workspace, "file.new", {{"width", 4LL}, {"height", 3LL}}).status;
    }
    CommandRegistry registry;
    testing::TestHost host;
    Document& doc = host.workspace.document;
    int saves = 0;
    bool saveWorks = true;
};

TEST_F(DiscardQuestion, NamesTheFileWithoutItsFolderOrUntitled) {
    EXPECT_EQ(SaveChangesQuestion("/some/folder/picture.tga"), "Save changes to \"picture.tga\"?");
    EXPECT_EQ(SaveChangesQuestion(""), "Save changes to \"Untitled\"?");
}

TEST_F(DiscardQuestion, NothingUnsavedAsksNothing) {
    SetModified(host.workspace, false);
    EXPECT_EQ(newDocument(), Status::Done);
    EXPECT_TRUE(host.prompter.questions.empty());
    EXPECT_EQ(doc.width, 4);
}

TEST_F(DiscardQuestion, SaveSavesThenGoesOn) {
    host.prompter.answers = {kSave};
    EXPECT_EQ(newDocument(), Status::Done);
    EXPECT_EQ(host.prompter.questions,
              std::vector<std::string>{"Save changes to \"picture.tga\"?"});
    EXPECT_EQ(host.prompter.buttons, std::vector<std::string>{"Save/Don't Save/Cancel"});
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(doc.width, 4);
    EXPECT_FALSE(doc.modified);
}

TEST_F(DiscardQuestion, AFailedSaveStopsWithTheDocumentAsItWas) {
    saveWorks = false;
    host.prompter.answers = {kSave};
    EXPECT_EQ(newDocument(), Status::Refused);
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(doc.width, 10);
    EXPECT_TRUE(doc.modified);
    EXPECT_EQ(doc.FileName, "/some/folder/picture.tga");
}

TEST_F(DiscardQuestion, DontSaveGoesOnWithoutSaving) {
    host.prompter.answers = {kDontSave};
    EXPECT_EQ(newDocument(), Status::Done);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(doc.width, 4);
    EXPECT_TRUE(doc.FileName.empty());
}

TEST_F(DiscardQuestion, CancelChangesNothing) {
    host.prompter.answers = {kCancel};
    EXPECT_EQ(newDocument(), Status::Refused);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(doc.width, 10);
    EXPECT_TRUE(doc.modified);
    EXPECT_EQ(doc.FileName, "/some/folder/picture.tga");
}

TEST_F(DiscardQuestion, EveryEditMarksTheDocumentAtOnceAndTellsTheTitle) {
    SetModified(host.workspace, false);
    int told = 0;
    const Subscription listening = host.workspace.events.modifiedChanged.subscribe([&] { ++told; });
    {
        const ImageEdit edit(host.workspace);
        EXPECT_FALSE(doc.modified);
    }
    EXPECT_TRUE(doc.modified);
    EXPECT_EQ(told, 1);
    {
        ImageEdit unchanged(host.workspace);
        unchanged.nothingChanged();
    }
    EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace wib
