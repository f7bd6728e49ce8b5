// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wib {

// The program that encodes and decodes videos, and the one that describes
// them; both found on the PATH.
inline constexpr const char* kFfmpegProgram = "ffmpeg";
inline constexpr const char* kFfprobeProgram = "ffprobe";
inline constexpr const char* kFfmpegMissingMessage =
    "The ffmpeg program could not be started. Install FFmpeg and make sure ffmpeg is on the PATH.";
inline constexpr const char* kFfprobeMissingMessage =
    "The ffprobe program could not be started. Install FFmpeg and make sure ffprobe is on the "
    "PATH.";

// The kinds of video the program writes, picked by the file's extension:
// .mp4 (H.264), .webm (VP9), .gif, .png (animated PNG) and .avi (Motion JPEG).
enum class VideoFormat { Mp4, WebM, Gif, Apng, Avi };

std::optional<VideoFormat> VideoFormatOfPath(const std::string& path);

// What the frames are encoded with.
struct VideoSettings {
    int width = 0;
    int height = 0;
    double fps = 24;
    // The H.264 speed preset: "ultrafast" .. "veryslow".
    std::string preset = "fast";
};

// The encoder's arguments, after its program name: raw rgb24 frames of
// settings.width x settings.height read from standard input at settings.fps,
// written to `output` in `format` whatever the output's name. The 4:2:0
// formats (MP4, WebM, AVI) need even sizes: an odd width or height gets one
// black column or row added on the right or at the bottom.
std::vector<std::string> EncodeArguments(VideoFormat format, const VideoSettings& settings,
                                         const std::string& output);

// A rate as the encoder reads it: "24", "29.97".
std::string RateArgument(double fps);

}  // namespace wib
