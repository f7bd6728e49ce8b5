// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include "fileio/image_sequence.h"
#include "fileio/rgb_frames.h"
#include "fileio/video_format.h"
#include "fileio/video_import.h"

namespace wib {
namespace {

// The value that follows `option` in `arguments`; empty when it is absent.
std::string After(const std::vector<std::string>& arguments, const std::string& option) {
    const auto found = std::find(arguments.begin(), arguments.end(), option);
    return found == arguments.end() || found + 1 == arguments.end() ? std::string() : *(found + 1);
}

TEST(VideoFormat, TheExtensionPicksTheFormatInAnyCase) {
    EXPECT_EQ(VideoFormatOfPath("/x/a.mp4"), VideoFormat::Mp4);
    EXPECT_EQ(VideoFormatOfPath("/x/a.MP4"), VideoFormat::Mp4);
    EXPECT_EQ(VideoFormatOfPath("/x/a.webm"), VideoFormat::WebM);
    EXPECT_EQ(VideoFormatOfPath("/x/a.gif"), VideoFormat::Gif);
    EXPECT_EQ(VideoFormatOfPath("/x/a.png"), VideoFormat::Apng);
    EXPECT_EQ(VideoFormatOfPath("/x/a.avi"), VideoFormat::Avi);
    EXPECT_EQ(VideoFormatOfPath("/x/a.mov"), std::nullopt);
    EXPECT_EQ(VideoFormatOfPath("/x/mp4"), std::nullopt);
}

TEST(VideoFormat, RawFramesComeInAtTheSizeAndRateAndGoOutInTheNamedFormat) {
    const VideoSettings settings{9, 7, 12.5, "ultrafast"};
    const auto mp4 = EncodeArguments(VideoFormat::Mp4, settings, "/x/.tmp-a.mp4");
    EXPECT_EQ(After(mp4, "-s"), "9x7");
    EXPECT_EQ(After(mp4, "-framerate"), "12.5");
    EXPECT_EQ(After(mp4, "-pix_fmt"), "rgb24");  // the first is the input's
    EXPECT_EQ(After(mp4, "-c:v"), "libx264");
    EXPECT_EQ(After(mp4, "-preset"), "ultrafast");
    EXPECT_EQ(After(mp4, "-f"), "rawvideo");
    EXPECT_NE(std::find(mp4.begin(), mp4.end(), "yuv420p"), mp4.end());
    // The muxer is named, since the temporary name says nothing of it.
    EXPECT_EQ(mp4[mp4.size() - 4], "-f");
    EXPECT_EQ(mp4[mp4.size() - 3], "mp4");
    EXPECT_EQ(mp4.back(), "/x/.tmp-a.mp4");

    const auto gif = EncodeArguments(VideoFormat::Gif, settings, "out");
    EXPECT_NE(After(gif, "-filter_complex").find("palettegen"), std::string::npos);
    EXPECT_NE(After(gif, "-filter_complex").find("paletteuse"), std::string::npos);
    EXPECT_EQ(After(EncodeArguments(VideoFormat::WebM, settings, "out"), "-c:v"), "libvpx-vp9");
    EXPECT_EQ(After(EncodeArguments(VideoFormat::Apng, settings, "out"), "-c:v"), "apng");
    EXPECT_EQ(After(EncodeArguments(VideoFormat::Avi, settings, "out"), "-c:v"), "mjpeg");
    EXPECT_EQ(RateArgument(24), "24");
    EXPECT_EQ(RateArgument(29.97), "29.97");
}

TEST(VideoInfo, ProbeLinesGiveSizeRateAndCount) {
    const auto info = ParseVideoInfo(
        "width=320\nheight=240\nr_frame_rate=60/1\navg_frame_rate=30000/1001\nnb_frames=90\n");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 320);
    EXPECT_EQ(info->height, 240);
    EXPECT_NEAR(info->fps, 29.97, 0.001);
    EXPECT_EQ(info->frameCount, 90);

    const auto unknownAverage =
        ParseVideoInfo("width=4\nheight=2\nr_frame_rate=25/1\navg_frame_rate=0/0\nnb_frames=N/A\n");
    ASSERT_TRUE(unknownAverage);
    EXPECT_DOUBLE_EQ(unknownAverage->fps, 25);
    EXPECT_EQ(unknownAverage->frameCount, 0);

    EXPECT_FALSE(ParseVideoInfo("height=240\nr_frame_rate=25/1\n"));
    EXPECT_FALSE(ParseVideoInfo("width=0\nheight=240\n"));
    EXPECT_FALSE(ParseVideoInfo(""));
}

TEST(RgbFrames, PlanesBecomeRedGreenBlueRowsFromTheTopAndComeBack) {
    // A 2 x 2 picture in planes with their spare column and row.
    ColourPlanes planes{Plane(2, 2), Plane(2, 2), Plane(2, 2)};
    std::uint8_t value = 1;
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) {
            planes.r.at(x, y) = value++;
            planes.g.at(x, y) = value++;
            planes.b.at(x, y) = value++;
        }
    }
    planes.r.at(2, 0) = 99;  // the spare column is never written out
    std::vector<std::uint8_t> rgb(12);
    RgbFromPlanes(planes, 2, 2, rgb.data());
    EXPECT_EQ(rgb, (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));

    const ColourPlanes back = PlanesFromRgb(rgb.data(), 2, 2);
    EXPECT_EQ(back.r.ubX(), 2);
    EXPECT_EQ(back.r.ubY(), 2);
    EXPECT_EQ(back.r.at(1, 1), 10);
    EXPECT_EQ(back.g.at(0, 1), 8);
    EXPECT_EQ(back.b.at(1, 0), 6);
    EXPECT_EQ(back.r.at(2, 0), 0);
}

TEST(NumberedNames, TheRunCountsUpToTheFirstMissingNumber) {
    const auto folder =
        std::filesystem::temp_directory_path() / ("wib-run-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    for (const char* name : {"shot0009.tga", "shot0010.tga", "shot0011.tga", "shot0013.tga"}) {
        std::ofstream(folder / name) << "x";
    }
    const auto run = NumberedRun((folder / "shot0009.tga").string());
    ASSERT_EQ(run.size(), 3u);
    EXPECT_EQ(run[2], (folder / "shot0011.tga").string());
    EXPECT_EQ(NumberedRun((folder / "shot0013.tga").string()).size(), 1u);
    std::filesystem::remove_all(folder);

    EXPECT_EQ(SequenceName("/x/shot0009.tga", 0), "/x/shot0009.tga");
    EXPECT_EQ(SequenceName("/x/shot0009.tga", 2), "/x/shot0011.tga");
    EXPECT_EQ(SequenceName("/x/shot.png", 0), "/x/shot0001.png");
    EXPECT_EQ(SequenceName("/x/shot.png", 11), "/x/shot0012.png");
}

}  // namespace
}  // namespace wib
