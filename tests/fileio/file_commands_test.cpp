// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/host/process_runner.h"
#include "fileio/converter_bridge.h"
#include "fileio/file_commands.h"
#include "fileio/file_filters.h"
#include "fileio/image_files.h"
#include "fileio/targa_header.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class NoProcesses : public ProcessRunner {
  public:
    std::optional<int> start(const std::string&) override { return std::nullopt; }
    bool running(int) override { return false; }
};

class FileCommands : public ::testing::Test {
  protected:
    void SetUp() override {
        RegisterFileCommands(registry, files);
        listening =
            files.fileUsed.subscribe([this](const std::string& path) { used.push_back(path); });
        host.newDocument(7, 5);
        testing::PaintPattern(doc);
    }
    Status run(const std::string& id, std::map<std::string, ParamValue> params = {}) {
        return registry.run(host.workspace, id, params).status;
    }
    TargaHeader headerOf(const std::string& path) {
        const auto bytes = testing::ReadFile(path);
        return ParseTargaHeader(std::span<const std::uint8_t>(bytes).first<kTargaHeaderSize>());
    }

    testing::TestHost host;
    testing::TempFolder folder;
    NoProcesses processes;
    ConverterBridge bridge{processes, folder.path()};
    ImageFiles files{bridge};
    CommandRegistry registry;
    Document& doc = host.workspace.document;
    std::vector<std::string> used;
    Subscription listening;
};

TEST_F(FileCommands, SaveAsTargaThenOpenAndSaveAgainInTheSameFormat) {
    const std::string path = folder.file("pic.tga");
    ASSERT_EQ(run("file.save", {{"path", path}, {"targa_format", 3LL}}), Status::Done);
    EXPECT_EQ(headerOf(path).imageType, kTargaGreyscale);
    EXPECT_EQ(doc.FileName, path);
    EXPECT_EQ(used, std::vector<std::string>{path});

    host.newDocument(2, 2);
    ASSERT_EQ(run("file.open", {{"path", path}}), Status::Done);
    EXPECT_EQ(doc.width, 7);
    doc.modified = true;
    ASSERT_EQ(run("file.save_current"), Status::Done);
    EXPECT_EQ(headerOf(path).imageType, kTargaGreyscale);
    EXPECT_EQ(doc.modified, false);
    EXPECT_EQ(used.size(), 3u);
}

TEST_F(FileCommands, ARenamedDocumentSavesUnderItsNewNameInTheSameFormat) {
    const std::string first = folder.file("first.tga");
    ASSERT_EQ(run("file.save", {{"path", first}, {"targa_format", 3LL}}), Status::Done);
    files.rename(host.workspace, "second.tga");
    EXPECT_EQ(doc.FileName, folder.file("second.tga")) << "a bare name keeps the folder";
    ASSERT_EQ(run("file.save_current"), Status::Done);
    EXPECT_EQ(headerOf(folder.file("second.tga")).imageType, kTargaGreyscale);

    // Never saved: the new name's extension says how.
    host.newDocument(3, 3);
    files.rename(host.workspace, folder.file("fresh.tga"));
    ASSERT_EQ(run("file.save_current"), Status::Done);
    EXPECT_EQ(headerOf(folder.file("fresh.tga")).width, 3);
}

TEST_F(FileCommands, OpeningAsTargaAsksAboutAnotherExtensionAndNoEndsIt) {
    const std::string path = folder.file("pic.dat");
    ASSERT_EQ(run("file.save", {{"path", path}, {"targa_format", 1LL}}), Status::Done);
    // The save asked to change the extension; the default answer kept it.
    EXPECT_EQ(host.prompter.questions.size(), 1u);
    host.newDocument(2, 2);
    host.prompter.answers = {2, 2};
    EXPECT_EQ(run("file.open", {{"path", path}, {"type", std::string("targa")}}), Status::Refused);
    EXPECT_EQ(host.prompter.questions.back(), kNotTargaQuestion);
    EXPECT_EQ(doc.width, 2);
    host.prompter.answers.push_back(1);
    EXPECT_EQ(run("file.open", {{"path", path}, {"type", std::string("targa")}}), Status::Done);
    EXPECT_EQ(doc.width, 7);
}

TEST_F(FileCommands, BadValuesAreRefusedWithoutTouchingTheDocument) {
    EXPECT_EQ(run("file.save", {{"path", folder.file("a.tga")}, {"targa_format", 5LL}}),
              Status::BadParameter);
    EXPECT_EQ(run("file.save", {{"path", folder.file("a.gif")}, {"type", std::string("Gif")}}),
              Status::Refused);
    EXPECT_EQ(
        run("file.save", {{"path", folder.file("a.lyr")}, {"type", std::string(kSaveTypeLayered)}}),
        Status::Refused);
    EXPECT_EQ(run("file.open", {{"type", std::string("png")}, {"path", folder.file("a.png")}}),
              Status::Refused);
    EXPECT_EQ(run("file.open"), Status::Refused);
    EXPECT_EQ(run("file.save_current"), Status::Refused);
    EXPECT_EQ(host.prompter.messages.size(), 5u);
    EXPECT_TRUE(doc.FileName.empty());
    EXPECT_TRUE(used.empty());
    EXPECT_FALSE(std::filesystem::exists(folder.file("a.tga")));
}

TEST_F(FileCommands, SavingAnUntitledImageAsksForANameAsSaveAsDoes) {
    const std::string path = folder.file("untitled.tga");
    std::vector<std::string> asked;
    registry.setDialog([&](const CommandSpec& command, auto& values) {
        asked.push_back(command.id);
        values["path"] = path;
        return true;
    });
    // The automation path and the menu's alike.
    ASSERT_EQ(run("file.save_current"), Status::Done);
    EXPECT_EQ(asked, std::vector<std::string>{"file.save"});
    EXPECT_EQ(doc.FileName, path);
    EXPECT_EQ(headerOf(path).imageType, 2);

    // Titled now: it saves where it is, asking nothing.
    ASSERT_EQ(run("file.save_current"), Status::Done);
    EXPECT_EQ(asked.size(), 1u);

    host.newDocument(3, 3);
    registry.setDialog([](const CommandSpec&, auto&) { return false; });
    EXPECT_EQ(run("file.save_current"), Status::Refused);
    EXPECT_TRUE(doc.FileName.empty());
}

}  // namespace
}  // namespace wib
