// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "core/document_build.h"
#include "fileio/conversion_wait.h"
#include "fileio/converter_bridge.h"
#include "fileio/converter_command.h"
#include "fileio/file_messages.h"
#include "fileio/image_files.h"
#include "fileio/targa_reader.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/support/spawn_process_runner.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using namespace std::chrono_literals;
using testing::Rgba;
using testing::RgbaAt;

// A hand-driven clock that runs `action` once when it passes `at`.
class ScheduledClock : public Clock {
  public:
    std::chrono::nanoseconds now() const override { return time; }
    void sleepFor(std::chrono::nanoseconds duration) override {
        time += duration;
        if (action && time >= at) {
            std::exchange(action, nullptr)();
        }
    }
    std::chrono::nanoseconds time{0};
    std::chrono::nanoseconds at{0};
    std::function<void()> action;
};

// A converter that writes nothing, but whose every start is recorded.
class SilentProcesses : public ProcessRunner {
  public:
    std::optional<int> start(const std::string& commandLine) override {
        commands.push_back(commandLine);
        return startable ? std::optional<int>(static_cast<int>(commands.size())) : std::nullopt;
    }
    bool running(int) override { return false; }
    std::optional<ProcessEnd> ended(int) override { return ProcessEnd{}; }
    std::vector<std::string> commands;
    bool startable = true;
};

class ConverterWait : public ::testing::Test {
  protected:
    ConverterWait()
        : workspace(HostServices{host.prompter, host.preferences, clock, host.view, host.system,
                                 host.log}) {}
    void SetUp() override { NewDocument(workspace, 3, 2); }

    testing::TestHost host;
    ScheduledClock clock;
    Workspace workspace;
    SilentProcesses processes;
    testing::TempFolder folder;
    ConverterBridge bridge{processes, folder.path()};
};

TEST_F(ConverterWait, TheCommandLinesAreTheConvertersOwn) {
    EXPECT_EQ(ToTargaCommandLine("convert", "/p/a b.png", "/t/TempTga.tga"),
              "convert \"/p/a b.png\" -matte -compress none -type TrueColorMatte  TGA:"
              "\"/t/TempTga.tga\"");
    EXPECT_EQ(FromTargaCommandLine("convert", "/t/TempTGA.tga", "/p/x.jpg", 75),
              "convert \"/t/TempTGA.tga\" -matte -type TrueColorMatte  -quality 75 \"/p/x.jpg\"");
    EXPECT_EQ(ConvertProgram(host.preferences), "convert");
    host.preferences.setValue("Settings", "ConverterFolder", "/opt/image magick");
    EXPECT_EQ(ConvertProgram(host.preferences), "\"/opt/image magick/convert\"");
}

TEST_F(ConverterWait, AFileThatAppearsIsGivenAThirdOfASecondToSettle) {
    const std::string source = folder.file("in.png");
    const std::string targa = bridge.openTarga();
    clock.at = 1200ms;
    clock.action = [&] { testing::WriteFile(targa, {1}); };
    ASSERT_TRUE(bridge.ConvertToTarga(workspace, source, targa));
    EXPECT_EQ(processes.commands,
              std::vector<std::string>{ToTargaCommandLine("convert", source, targa)});
    EXPECT_GE(clock.time, 1200ms + kSettleTime);
    EXPECT_LT(clock.time, 1200ms + kSettleTime + kSettlePoll + kConversionPoll);
    EXPECT_EQ(
        host.prompter.statusLog,
        (std::vector<std::string>{"open:Processing...", "text:Computer stuff happening...",
                                  "text:Waiting on file conversion.", "text:Conversion completed.",
                                  "text:Conversion success...", "text:Processing..."}));
    // The bar climbs with the seconds waited (1.2 s of 4.5) and ends full.
    const auto& progress = host.prompter.progressLog;
    EXPECT_EQ(progress.front(), 0);
    EXPECT_EQ(progress[progress.size() - 2], 26);
    EXPECT_EQ(progress.back(), 100);
    EXPECT_TRUE(host.prompter.questions.empty());
}

TEST_F(ConverterWait, AfterFourAndAHalfSecondsRetryWaitsAgainAndCancelGivesUp) {
    host.prompter.answers = {1, 1, 1, 2};
    processes.startable = false;  // a converter that is not there
    EXPECT_FALSE(bridge.ConvertToTarga(workspace, folder.file("in.png"), bridge.openTarga()));
    EXPECT_EQ(host.prompter.questions, std::vector<std::string>(4, kConvertTimedOut));
    EXPECT_GE(clock.time, 4 * kConversionTimeOut);
    EXPECT_LT(clock.time, 4 * (kConversionTimeOut + kConversionPoll));
    EXPECT_EQ(host.prompter.statusLog.back(), "close");
    EXPECT_EQ(host.log.lines.size(), 1u);
}

TEST_F(ConverterWait, ATerminationSignalEndsTheWaitEvenWhenTheUserKeepsRetrying) {
    host.prompter.defaultAnswer = 1;
    clock.at = 20s;
    clock.action = [this] { workspace.quitPending = true; };
    EXPECT_FALSE(WaitForConversion(workspace, [] { return false; }));
    EXPECT_EQ(host.prompter.questions.size(), 4u) << "asked every 4.5 s until the signal";
}

TEST_F(ConverterWait, OpeningThroughAConverterThatNeverAnswersChangesNothing) {
    ImageFiles files(bridge);
    const std::string source = folder.file("photo.png");
    testing::WriteFile(source, {1, 2, 3});
    EXPECT_FALSE(files.open(workspace, source, "auto"));
    EXPECT_EQ(host.prompter.questions, std::vector<std::string>{kConvertTimedOut});
    EXPECT_EQ(workspace.document.width, 3);
    EXPECT_EQ(workspace.document.RBuffer.at(0, 0), 255);
    EXPECT_TRUE(workspace.document.FileName.empty());
    // A file that is not there is said so at once.
    EXPECT_FALSE(files.open(workspace, folder.file("nothing.png"), "auto"));
    EXPECT_EQ(host.prompter.messages.back(), CannotOpenMessage(folder.file("nothing.png")));
}

struct SteadyClock : Clock {
    std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
};

// A workspace whose image files go through real processes, with a folder of
// the test's own for the converter's files.
class ConverterFiles : public ::testing::Test {
  protected:
    ConverterFiles()
        : workspace(HostServices{host.prompter, host.preferences, clock, host.view, host.system,
                                 host.log}) {}

    testing::TestHost host;
    SteadyClock clock;
    Workspace workspace;
    testing::SpawnProcessRunner processes;
    testing::TempFolder folder;
    ConverterBridge bridge{processes, folder.path()};
    ImageFiles files{bridge};
};

// A converter of our own making in the converter folder: it fails as told.
class FailingConverter : public ConverterFiles {
  protected:
    void SetUp() override {
        NewDocument(workspace, 4, 3);
        std::filesystem::create_directories(folder.path() / "bin");
        std::filesystem::create_directories(folder.path() / "out");
        host.preferences.setValue("Settings", "ConverterFolder", folder.file("bin"));
        target = folder.file("out/picture.png");
        testing::WriteFile(target, {'o', 'l', 'd'});
    }
    void converterScript(const std::string& body) {
        const std::string script = folder.file("bin/convert");
        std::ofstream(script) << "#!/bin/sh\n" << body << "\n";
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    bool save() { return files.save(workspace, target, {"Png", 2, 90}); }
    std::size_t filesInOut() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder.path() / "out"),
                          std::filesystem::directory_iterator()));
    }

    std::string target;
};

TEST_F(FailingConverter, AFailureKeepsTheOldFileAndShowsTheConvertersLastErrorLine) {
    converterScript(
        "echo 'working...' >&2\necho 'convert: no encode delegate for PNG' >&2\nexit 1");
    EXPECT_FALSE(save());
    EXPECT_EQ(host.prompter.messages.back(),
              "The converter did not write " + target + "\nconvert: no encode delegate for PNG");
    EXPECT_EQ(testing::ReadFile(target), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
    EXPECT_EQ(filesInOut(), 1u);
    EXPECT_FALSE(workspace.document.FileName == target);
}

TEST_F(FailingConverter, SuccessWithAnEmptyFileIsAFailureToo) {
    converterScript("for a; do last=$a; done\n: > \"$last\"\nexit 0");
    EXPECT_FALSE(save());
    EXPECT_EQ(host.prompter.messages.back(), "The converter did not write " + target);
    EXPECT_EQ(testing::ReadFile(target), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
    EXPECT_EQ(filesInOut(), 1u);
}

TEST_F(FailingConverter, AWholeFileReplacesTheOldOneOnlyOnceWritten) {
    converterScript("for a; do last=$a; done\n[ -e \"$last\" ] && exit 3\nprintf new > \"$last\"");
    EXPECT_TRUE(save());
    EXPECT_EQ(testing::ReadFile(target), (std::vector<std::uint8_t>{'n', 'e', 'w'}));
    EXPECT_EQ(filesInOut(), 1u);
    EXPECT_EQ(workspace.document.FileName, target);
}

// The rest drive the real converter, which the build installs.
class RealConverter : public ConverterFiles {
  protected:
    void SetUp() override {
        if (!processes.start("convert -version")) {
            GTEST_SKIP() << "no converter on the PATH";
        }
        NewDocument(workspace, 7, 5);
        testing::PaintPattern(workspace.document);
        host.prompter.defaultAnswer = 1;
    }

    // Runs the converter to its end.
    void convert(const std::string& arguments) {
        const auto id = processes.start("convert " + arguments);
        ASSERT_TRUE(id);
        while (processes.running(*id)) {
            clock.sleepFor(5ms);
        }
    }

    // The pixels of a binary PPM file, as the converter wrote it.
    std::vector<std::array<std::uint8_t, 3>> readPpm(const std::string& path) {
        const auto bytes = testing::ReadFile(path);
        std::istringstream text(std::string(bytes.begin(), bytes.end()));
        std::string magic;
        int width = 0, height = 0, maximum = 0;
        text >> magic >> width >> height >> maximum;
        std::size_t at = static_cast<std::size_t>(text.tellg()) + 1;
        std::vector<std::array<std::uint8_t, 3>> pixels;
        for (int i = 0; i < width * height && at + 3 <= bytes.size(); ++i, at += 3) {
            pixels.push_back({bytes[at], bytes[at + 1], bytes[at + 2]});
        }
        return pixels;
    }

    void writePatternPpm(const std::string& path) {
        std::string header = "P6\n7 5\n255\n";
        std::vector<std::uint8_t> bytes(header.begin(), header.end());
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 7; ++x) {
                const Rgba colour = testing::PatternAt(x, y);
                bytes.insert(bytes.end(), {colour.r, colour.g, colour.b});
            }
        }
        testing::WriteFile(path, bytes);
    }

    void expectPattern(int tolerance, bool alpha) {
        const Document& doc = workspace.document;
        ASSERT_EQ(doc.width, 7);
        ASSERT_EQ(doc.height, 5);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 7; ++x) {
                const Rgba want = testing::PatternAt(x, y);
                const Rgba got = RgbaAt(doc, x, y);
                ASSERT_NEAR(got.r, want.r, tolerance) << x << "," << y;
                ASSERT_NEAR(got.g, want.g, tolerance) << x << "," << y;
                ASSERT_NEAR(got.b, want.b, tolerance) << x << "," << y;
                ASSERT_EQ(got.a, alpha ? want.a : 255) << x << "," << y;
            }
        }
    }
};

TEST_F(RealConverter, ImagesComeInAndGoOutTheRightWayUp) {
    const std::string ppm = folder.file("pattern.ppm");
    writePatternPpm(ppm);
    const std::string png = folder.file("pattern.png");
    convert(Quoted(ppm) + " " + Quoted(png));
    NewDocument(workspace, 2, 2);
    ASSERT_TRUE(files.open(workspace, png, "auto"));
    expectPattern(0, false);
    EXPECT_EQ(workspace.document.FileName, png);

    testing::PaintPattern(workspace.document);
    const std::string saved = folder.file("saved.png");
    ASSERT_TRUE(files.save(workspace, saved, {"Png", 2, 90}));
    const std::string back = folder.file("back.ppm");
    convert(Quoted(saved) + " -depth 8 PPM:" + Quoted(back));
    const auto pixels = readPpm(back);
    ASSERT_EQ(pixels.size(), 35u);
    const Rgba topLeft = testing::PatternAt(0, 0);
    EXPECT_EQ(pixels[0], (std::array<std::uint8_t, 3>{topLeft.r, topLeft.g, topLeft.b}));

    NewDocument(workspace, 2, 2);
    ASSERT_TRUE(files.open(workspace, saved, "auto"));
    expectPattern(0, true);

    const std::string jpeg = folder.file("saved.jpg");
    ASSERT_TRUE(files.save(workspace, jpeg, {"Jpg", 2, 100}));
    NewDocument(workspace, 2, 2);
    ASSERT_TRUE(files.open(workspace, jpeg, "auto"));
    expectPattern(16, false);
    EXPECT_FALSE(std::filesystem::exists(bridge.openTarga()));
    EXPECT_FALSE(std::filesystem::exists(bridge.saveTarga()));
}

TEST_F(RealConverter, TargasTheConverterWritesReadAsItReadsThem) {
    const std::string ppm = folder.file("pattern.ppm");
    writePatternPpm(ppm);
    const std::pair<const char*, std::uint8_t> kinds[] = {
        {"-compress none", kTargaTrueColor},
        {"-compress RLE", kTargaTrueColorRle},
        {"-compress RLE -type TrueColorMatte", kTargaTrueColorRle},
        {"-compress none -type Grayscale", kTargaGreyscale},
        {"-compress none -type Palette", kTargaColorMapped},
    };
    for (const auto& [options, type] : kinds) {
        SCOPED_TRACE(options);
        const std::string targa = folder.file("written.tga");
        const std::string view = folder.file("view.ppm");
        convert(Quoted(ppm) + " " + options + " TGA:" + Quoted(targa));
        convert(Quoted(targa) + " -depth 8 PPM:" + Quoted(view));
        const auto header =
            LoadTarga(workspace, targa, 0, bridge.rowsOfConvertedTarga(workspace, targa));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->imageType, type);
        const auto pixels = readPpm(view);
        ASSERT_EQ(pixels.size(), 35u);
        for (int i = 0; i < 35; ++i) {
            const Rgba got = RgbaAt(workspace.document, i % 7, i / 7);
            ASSERT_EQ((std::array<std::uint8_t, 3>{got.r, got.g, got.b}),
                      pixels[static_cast<std::size_t>(i)])
                << i;
        }
    }
}

}  // namespace
}  // namespace wib
