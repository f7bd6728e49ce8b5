// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "core/commands.h"
#include "core/host/process_runner.h"
#include "core/layer_edit.h"
#include "fileio/converter_bridge.h"
#include "fileio/file_commands.h"
#include "fileio/file_filters.h"
#include "fileio/image_files.h"
#include "fileio/targa_header.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class NoProcesses : public ProcessRunner {
  public:
    std::optional<int> start(const std::string&) override { return std::nullopt; }
    bool running(int) override { return false; }
    std::optional<ProcessEnd> ended(int) override { return std::nullopt; }
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
    EXPECT_EQ(run("file.open", {{"type", std::string("png")}, {"path", folder.file("a.png")}}),
              Status::Refused);
    EXPECT_EQ(run("file.open"), Status::Refused);
    EXPECT_EQ(run("file.save_current"), Status::Refused);
    EXPECT_EQ(host.prompter.messages.size(), 4u);
    EXPECT_TRUE(doc.FileName.empty());
    EXPECT_TRUE(used.empty());
    EXPECT_FALSE(std::filesystem::exists(folder.file("a.tga")));
}

TEST_F(FileCommands, LayeredFilesKeepTheLayersAndFlatSavesTheComposite) {
    Workspace& ws = host.workspace;
    ClearImage(doc, {10, 20, 30});
    ASSERT_TRUE(AddLayer(ws));
    doc.RBuffer.fill(200);
    doc.Coverage.at(3, 2) = 255;
    ASSERT_TRUE(ChangeLayer(ws, 1, {.name = "ink", .opacity = 128, .mode = BlendMode::Difference}));
    for (const char* type : {"Layered", "OpenRaster"}) {
        const std::string path =
            folder.file(std::string("pic") + (type == std::string("Layered") ? ".lyr" : ".ora"));
        ASSERT_EQ(run("file.save", {{"path", path}, {"type", std::string(type)}}), Status::Done)
            << type;
        host.newDocument(3, 3);
        ASSERT_EQ(run("file.open", {{"path", path}}), Status::Done) << type;
        EXPECT_EQ(doc.width, 7);
        ASSERT_EQ(LayerCount(ws), 2) << type;
        EXPECT_EQ(LayerAt(ws, 1).name, "ink");
        EXPECT_EQ(LayerAt(ws, 1).opacity, 128);
        EXPECT_EQ(LayerAt(ws, 1).mode, BlendMode::Difference);
        EXPECT_EQ(CurrentLayer(ws), 1);
        EXPECT_EQ(doc.Coverage.at(3, 2), 255);
        EXPECT_EQ(doc.Coverage.at(2, 2), 0);
        EXPECT_EQ(doc.FileName, path);
        EXPECT_FALSE(doc.modified);
    }
    // A flat save is the composite: |200 - 10| at half opacity over 10.
    const std::string flat = folder.file("flat.tga");
    ASSERT_EQ(run("file.save", {{"path", flat}, {"targa_format", 2LL}}), Status::Done);
    host.newDocument(3, 3);
    ASSERT_EQ(run("file.open", {{"path", flat}}), Status::Done);
    EXPECT_EQ(LayerCount(ws), 1);
    EXPECT_NEAR(doc.RBuffer.at(3, 2), 10 + (190 - 10) * 128 / 255.0, 1.0);
    EXPECT_EQ(doc.RBuffer.at(2, 2), 10);

    const std::string damaged = folder.file("bad.lyr");
    std::filesystem::copy_file(folder.file("pic.lyr"), damaged);
    std::filesystem::resize_file(damaged, 40);
    ASSERT_EQ(run("file.open", {{"path", damaged}}), Status::Refused);
    EXPECT_EQ(doc.FileName, flat) << "a damaged file leaves the document as it was";
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

// Open throws the document away: unsaved changes are asked about first, and
// Save writes them where the document came from before the other file opens.
TEST_F(FileCommands, OpeningOverUnsavedChangesAsksAndEachAnswerDoesItsPart) {
    const std::string mine = folder.file("mine.tga");
    const std::string other = folder.file("other.tga");
    ASSERT_EQ(run("file.save", {{"path", mine}}), Status::Done);
    host.newDocument(3, 2);
    ASSERT_EQ(run("file.save", {{"path", other}}), Status::Done);
    ASSERT_EQ(run("file.open", {{"path", mine}}), Status::Done);
    EXPECT_TRUE(host.prompter.questions.empty()) << "nothing unsaved, nothing asked";

    doc.RBuffer.at(0, 0) = 0x42;
    doc.modified = true;
    host.prompter.answers = {3, 1, 2};
    EXPECT_EQ(run("file.open", {{"path", other}}), Status::Refused);
    EXPECT_EQ(doc.FileName, mine);
    EXPECT_EQ(doc.width, 7);
    EXPECT_TRUE(doc.modified);

    EXPECT_EQ(run("file.open", {{"path", other}}), Status::Done);
    EXPECT_EQ(doc.width, 3);
    EXPECT_EQ(testing::ReadFile(mine).at(kTargaHeaderSize + 2 + 4 * 7 * 4), 0x42)
        << "Save wrote the change (bottom row first, BGRA) before the other file opened";

    doc.modified = true;
    EXPECT_EQ(run("file.open", {{"path", mine}}), Status::Done);
    EXPECT_EQ(doc.width, 7);
    EXPECT_EQ(
        host.prompter.questions,
        (std::vector<std::string>{"Save changes to \"mine.tga\"?", "Save changes to \"mine.tga\"?",
                                  "Save changes to \"other.tga\"?"}));
}

TEST_F(FileCommands, SaveForAnUntitledDocumentWithNoNameGivenCancelsTheOpen) {
    const std::string other = folder.file("other.tga");
    ASSERT_EQ(run("file.save", {{"path", other}}), Status::Done);
    host.newDocument(3, 2);
    doc.modified = true;
    host.prompter.answers = {1};
    EXPECT_EQ(run("file.open", {{"path", other}}), Status::Refused);
    EXPECT_EQ(host.prompter.questions.back(), "Save changes to \"Untitled\"?");
    EXPECT_TRUE(doc.FileName.empty());
    EXPECT_TRUE(doc.modified);
}

TEST_F(FileCommands, ASaveThatRunsOutOfRoomLeavesTheOldFileAndSaysWhy) {
    const std::string path = folder.file("big.tga");
    ASSERT_EQ(run("file.save", {{"path", path}}), Status::Done);
    const auto old = testing::ReadFile(path);
    host.newDocument(300, 300);
    const int status = testing::RunWithFileSizeLimit(8192, [&] {
        const bool refused = run("file.save", {{"path", path}}) == Status::Refused;
        const bool told =
            host.prompter.messages ==
            std::vector<std::string>{"The file cannot be written: " + path + "\nFile too large"};
        return refused && told ? 0 : 1;
    });
    EXPECT_EQ(status, 0) << "refused, with the system's reason";
    EXPECT_EQ(testing::ReadFile(path), old);
}

// Two programs saving over one file at once: whatever order the saves end
// in, the file is always one whole picture, never a mixture or a cut.
TEST_F(FileCommands, TwoProgramsSavingOneFileAtOnceLeaveOneWholePicture) {
    const std::string path = folder.file("shared.tga");
    std::vector<pid_t> children;
    for (int width : {5, 9}) {
        const pid_t child = ::fork();
        if (child == 0) {
            host.newDocument(width, 3);
            bool saved = true;
            for (int i = 0; i < 30; ++i) {
                saved = saved && run("file.save", {{"path", path}}) == Status::Done;
            }
            ::_exit(saved ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    const auto bytes = testing::ReadFile(path);
    const int width = headerOf(path).width;
    ASSERT_TRUE(width == 5 || width == 9) << width;
    EXPECT_EQ(bytes.size(), kTargaHeaderSize + 4u * static_cast<std::size_t>(width) * 3)
        << "32-bit pixels, nothing before or after";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()),
                            std::filesystem::directory_iterator()),
              1)
        << "no temporary file left behind";
}

}  // namespace
}  // namespace wib
