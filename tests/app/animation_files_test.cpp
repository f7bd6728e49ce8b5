// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

#include "anim/frame_store.h"
#include "app/animation_file_commands.h"
#include "core/commands.h"
#include "fileio/converter_bridge.h"
#include "fileio/video_format.h"
#include "tests/support/spawn_process_runner.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

namespace fs = std::filesystem;

// Four frames, each one flat colour; the first and the last differ most.
constexpr std::array<PackedColour, 4> kFrameColours{
    PackedColour{200, 30, 40}, PackedColour{30, 200, 40}, PackedColour{40, 30, 200},
    PackedColour{220, 220, 60}};

// What ffprobe, run by hand, says of a video's picture stream.
std::map<std::string, std::string> Probe(const fs::path& video) {
    const std::string command =
        "ffprobe -v error -count_frames -select_streams v:0 -show_entries "
        "stream=width,height,r_frame_rate,nb_read_frames -of default=noprint_wrappers=1 '" +
        video.string() + "'";
    std::map<std::string, std::string> fields;
    FILE* pipe = popen(command.c_str(), "r");
    char line[256];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr) {
        std::string text(line);
        const auto equals = text.find('=');
        if (equals != std::string::npos) {
            fields[text.substr(0, equals)] = text.substr(equals + 1, text.find('\n') - equals - 1);
        }
    }
    if (pipe != nullptr) {
        pclose(pipe);
    }
    return fields;
}

// PATH for the duration of a test.
class PathOverride {
  public:
    explicit PathOverride(const std::string& path) : saved_(std::getenv("PATH")) {
        setenv("PATH", path.c_str(), 1);
    }
    ~PathOverride() { setenv("PATH", saved_.c_str(), 1); }

  private:
    std::string saved_;
};

class AnimationFiles : public ::testing::Test {
  protected:
    AnimationFiles() {
        fs::create_directories(folder);
        host.newDocument(16, 12);
        RegisterAnimationFileCommands(commands, store, converter, processes);
    }
    ~AnimationFiles() override { fs::remove_all(folder); }

    // The four coloured frames at 10 fps, frame 0 current.
    void makeFrames() {
        ClearImage(host.workspace.document, kFrameColours[0]);
        ASSERT_TRUE(store.CreateAnimation(4, 0));
        for (int f = 1; f < 4; ++f) {
            store.GotoFrame(f);
            ClearImage(host.workspace.document, kFrameColours[static_cast<std::size_t>(f)]);
        }
        store.GotoFrame(0);
        store.rateField().setRate(10);
    }

    CommandOutcome::Status run(const std::string& id, std::map<std::string, ParamValue> values) {
        return commands.run(host.workspace, id, std::move(values)).status;
    }

    // The largest difference of any pixel of frame `index` from `colour`.
    int worstDifference(int index, PackedColour colour) {
        int worst = 0;
        const Document& doc = host.workspace.document;
        const Plane r = store.framePlane(FrameColour::Red, index);
        const Plane g = store.framePlane(FrameColour::Green, index);
        const Plane b = store.framePlane(FrameColour::Blue, index);
        for (int y = 0; y < doc.height; ++y) {
            for (int x = 0; x < doc.width; ++x) {
                worst =
                    std::max({worst, std::abs(r.at(x, y) - colour.r),
                              std::abs(g.at(x, y) - colour.g), std::abs(b.at(x, y) - colour.b)});
            }
        }
        return worst;
    }

    // Every file in the test's folder but the crop file.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().filename() != "crop.tmp" && entry.is_regular_file()) {
                names.push_back(entry.path().filename().string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder = fs::temp_directory_path() /
                      ("wib-animfiles-" + std::to_string(::getpid()) + "-" +
                       ::testing::UnitTest::GetInstance()->current_test_info()->name());
    testing::TestHost host;
    FrameStore store{host.workspace, folder / "crop.tmp"};
    testing::SpawnProcessRunner processes;
    ConverterBridge converter{processes, folder};
    CommandRegistry commands;
};

struct FormatCase {
    const char* extension;
    int tolerance;  // how far a decoded pixel may stray from ours
};

TEST_F(AnimationFiles, EveryFormatHoldsEveryFrameAtTheSizeAndRateAndDecodesBack) {
    for (const FormatCase format :
         {FormatCase{".mp4", 8}, FormatCase{".webm", 10}, FormatCase{".gif", 2},
          FormatCase{".png", 0}, FormatCase{".avi", 10}}) {
        SCOPED_TRACE(format.extension);
        host.newDocument(16, 12);
        makeFrames();
        const fs::path video = folder / (std::string("shot") + format.extension);
        ASSERT_EQ(run("anim.export_video", {{"path", video.string()}}),
                  CommandOutcome::Status::Done);
        EXPECT_EQ(files(), std::vector<std::string>{video.filename().string()});

        const auto probed = Probe(video);
        EXPECT_EQ(probed.at("nb_read_frames"), "4");
        EXPECT_EQ(probed.at("width"), "16");
        EXPECT_EQ(probed.at("height"), "12");
        EXPECT_EQ(probed.at("r_frame_rate"), "10/1");

        store.rateField().setRate(24);
        host.prompter.defaultAnswer = 1;  // free the animation held
        ASSERT_EQ(run("anim.import_video", {{"path", video.string()}}),
                  CommandOutcome::Status::Done);
        EXPECT_EQ(store.FrameCount(), 4);
        EXPECT_EQ(store.rateField().rate(), 10);
        EXPECT_LE(worstDifference(0, kFrameColours[0]), format.tolerance);
        EXPECT_LE(worstDifference(3, kFrameColours[3]), format.tolerance);
        fs::remove(video);
    }
}

TEST_F(AnimationFiles, OddSizesArePaddedOnlyWhereTheCodecNeedsEvenOnes) {
    host.newDocument(9, 7);
    makeFrames();
    ASSERT_EQ(run("anim.export_video", {{"path", (folder / "odd.mp4").string()}, {"fps", 25.0}}),
              CommandOutcome::Status::Done);
    ASSERT_EQ(run("anim.export_video", {{"path", (folder / "odd.gif").string()}}),
              CommandOutcome::Status::Done);
    const auto mp4 = Probe(folder / "odd.mp4");
    EXPECT_EQ(mp4.at("width") + "x" + mp4.at("height"), "10x8");
    EXPECT_EQ(mp4.at("r_frame_rate"), "25/1");
    const auto gif = Probe(folder / "odd.gif");
    EXPECT_EQ(gif.at("width") + "x" + gif.at("height"), "9x7");
}

TEST_F(AnimationFiles, WithoutFfmpegNothingIsWrittenAndTheUserIsTold) {
    makeFrames();
    const PathOverride empty(folder.string());
    EXPECT_EQ(run("anim.export_video", {{"path", (folder / "shot.mp4").string()}}),
              CommandOutcome::Status::Refused);
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(host.prompter.messages[0], kFfmpegMissingMessage);
    EXPECT_TRUE(files().empty());
}

TEST_F(AnimationFiles, AFailingEncodeLeavesNoFileAndReportsItsLastErrorLine) {
    makeFrames();
    // An encoder that writes half a file, complains and fails.
    const fs::path bin = folder / "bin";
    fs::create_directories(bin);
    {
        std::ofstream script(bin / "ffmpeg");
        script << "#!/bin/sh\nfor last; do :; done\necho partial > \"$last\"\ncat > /dev/null\n"
                  "echo 'first complaint' >&2\necho 'Encoder exploded' >&2\nexit 1\n";
    }
    fs::permissions(bin / "ffmpeg", fs::perms::owner_all);
    {
        const PathOverride fake(bin.string() + ":" + std::getenv("PATH"));
        EXPECT_EQ(run("anim.export_video", {{"path", (folder / "shot.webm").string()}}),
                  CommandOutcome::Status::Refused);
    }
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_NE(host.prompter.messages[0].find("shot.webm\nEncoder exploded"), std::string::npos);
    EXPECT_TRUE(files().empty());

    // The real encoder failing to open its output is told the same way.
    EXPECT_EQ(run("anim.export_video", {{"path", (folder / "no" / "such.mp4").string()}}),
              CommandOutcome::Status::Refused);
    ASSERT_EQ(host.prompter.messages.size(), 2u);
    EXPECT_NE(host.prompter.messages[1].find("The video could not be written"), std::string::npos);
}

TEST_F(AnimationFiles, CancellingAnExportLeavesNoFile) {
    makeFrames();
    host.prompter.cancelAfterPolls = 2;
    EXPECT_EQ(run("anim.export_video", {{"path", (folder / "shot.avi").string()}}),
              CommandOutcome::Status::Refused);
    EXPECT_TRUE(files().empty());
    EXPECT_TRUE(host.prompter.messages.empty());
}

TEST_F(AnimationFiles, AMissingOrDamagedVideoLeavesTheAnimationAsItWas) {
    makeFrames();
    { std::ofstream(folder / "bad.mp4") << "this is no video at all"; }
    host.prompter.defaultAnswer = 1;
    EXPECT_EQ(run("anim.import_video", {{"path", (folder / "missing.mp4").string()}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(run("anim.import_video", {{"path", (folder / "bad.mp4").string()}}),
              CommandOutcome::Status::Refused);
    ASSERT_EQ(host.prompter.messages.size(), 2u);
    EXPECT_NE(host.prompter.messages[1].find("The video could not be read"), std::string::npos);
    EXPECT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(host.workspace.document.width, 16);
    for (int f = 0; f < 4; ++f) {
        EXPECT_EQ(worstDifference(f, kFrameColours[static_cast<std::size_t>(f)]), 0);
    }
}

TEST_F(AnimationFiles, AnImportTakesAtMostTheFramesAskedForAndAsksBeforeFreeing) {
    makeFrames();
    const std::string video = (folder / "shot.mp4").string();
    ASSERT_EQ(run("anim.export_video", {{"path", video}}), CommandOutcome::Status::Done);

    host.prompter.defaultAnswer = 2;  // Cancel: keep the animation
    EXPECT_EQ(run("anim.import_video", {{"path", video}, {"max_frames", 2LL}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.questions.back(), kAnimationExistsQuestion);
    EXPECT_EQ(store.FrameCount(), 4);

    host.prompter.defaultAnswer = 1;
    EXPECT_EQ(run("anim.import_video", {{"path", video}, {"max_frames", 2LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(store.FrameCount(), 2);
    EXPECT_LE(worstDifference(1, kFrameColours[1]), 8);
}

TEST_F(AnimationFiles, ATargaSequenceGoesOutNumberedAndComesBackWhole) {
    makeFrames();
    ASSERT_EQ(run("anim.export_sequence", {{"path", (folder / "shot0009.tga").string()}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(files(), (std::vector<std::string>{"shot0009.tga", "shot0010.tga", "shot0011.tga",
                                                 "shot0012.tga"}));

    store.FreeAnimation();
    host.newDocument(5, 5);
    // A file past a gap in the numbers is not part of the run.
    fs::copy_file(folder / "shot0009.tga", folder / "shot0014.tga");
    ASSERT_EQ(run("anim.import_sequence", {{"path", (folder / "shot0009.tga").string()}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(host.workspace.document.width, 16);
    EXPECT_EQ(host.workspace.document.height, 12);
    for (int f = 0; f < 4; ++f) {
        EXPECT_EQ(worstDifference(f, kFrameColours[static_cast<std::size_t>(f)]), 0);
    }
}

TEST_F(AnimationFiles, OtherFormatsGoOutAndComeBackThroughTheConverter) {
    makeFrames();
    // The hand-driven clock makes every wait for the converter time out at
    // once; Retry (the first button) waits on until it is done.
    host.prompter.defaultAnswer = 1;
    ASSERT_EQ(run("anim.export_sequence",
                  {{"path", (folder / "take.png").string()}, {"type", std::string("Png")}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(files(), (std::vector<std::string>{"take0001.png", "take0002.png", "take0003.png",
                                                 "take0004.png"}));
    ASSERT_EQ(run("anim.import_sequence", {{"path", (folder / "take0002.png").string()}}),
              CommandOutcome::Status::Done);
    ASSERT_EQ(store.FrameCount(), 3);
    EXPECT_EQ(worstDifference(0, kFrameColours[1]), 0);
    EXPECT_EQ(worstDifference(2, kFrameColours[3]), 0);
}

TEST_F(AnimationFiles, ExportsNeedAnAnimationAndAKnownFormat) {
    EXPECT_EQ(run("anim.export_video", {{"path", (folder / "a.mp4").string()}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(run("anim.export_sequence", {{"path", (folder / "a0001.tga").string()}}),
              CommandOutcome::Status::Refused);
    makeFrames();
    EXPECT_EQ(run("anim.export_video", {{"path", (folder / "a.mov").string()}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(run("anim.export_sequence", {{"path", (folder / "a0001.lyr").string()},
                                           {"type", std::string("Layered format")}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages.size(), 4u);
    EXPECT_TRUE(files().empty());
}

}  // namespace
}  // namespace wib
