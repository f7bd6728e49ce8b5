// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/video_format.h"

#include <cstdio>

#include "fileio/file_names.h"

namespace wib {

namespace {

constexpr const char* kPadToEven = "pad=ceil(iw/2)*2:ceil(ih/2)*2";
// One palette made from every frame, then each frame mapped onto it.
constexpr const char* kGifPalette =
    "split[frames][copy];[frames]palettegen=stats_mode=full[palette];[copy][palette]paletteuse";

std::vector<std::string> FormatArguments(VideoFormat format, const VideoSettings& settings) {
    switch (format) {
        case VideoFormat::Mp4:
            return {"-vf",           kPadToEven,   "-c:v", "libx264",  "-preset",
                    settings.preset, "-crf",       "18",   "-pix_fmt", "yuv420p",
                    "-movflags",     "+faststart", "-f",   "mp4"};
        case VideoFormat::WebM:
            return {"-vf",       kPadToEven, "-c:v",      "libvpx-vp9", "-pix_fmt", "yuv420p",
                    "-crf",      "30",       "-b:v",      "0",          "-row-mt",  "1",
                    "-deadline", "good",     "-cpu-used", "4",          "-f",       "webm"};
        case VideoFormat::Gif:
            return {"-filter_complex", kGifPalette, "-loop", "0", "-f", "gif"};
        case VideoFormat::Apng:
            return {"-c:v", "apng", "-plays", "0", "-f", "apng"};
        case VideoFormat::Avi:
            return {"-vf", kPadToEven, "-c:v",     "mjpeg", "-q:v",
                    "3",   "-pix_fmt", "yuvj420p", "-f",    "avi"};
    }
    return {};
}

}  // namespace

std::optional<VideoFormat> VideoFormatOfPath(const std::string& path) {
    const std::string extension = LowerExtension(path);
    if (extension == ".mp4") {
        return VideoFormat::Mp4;
    }
    if (extension == ".webm") {
        return VideoFormat::WebM;
    }
    if (extension == ".gif") {
        return VideoFormat::Gif;
    }
    if (extension == ".png" || extension == ".apng") {
        return VideoFormat::Apng;
    }
    if (extension == ".avi") {
        return VideoFormat::Avi;
    }
    return std::nullopt;
}

std::string RateArgument(double fps) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", fps);
    return text;
}

std::vector<std::string> EncodeArguments(VideoFormat format, const VideoSettings& settings,
                                         const std::string& output) {
    std::vector<std::string> arguments{
        "-hide_banner",
        "-loglevel",
        "error",
        "-f",
        "rawvideo",
        "-pix_fmt",
        "rgb24",
        "-s",
        std::to_string(settings.width) + "x" + std::to_string(settings.height),
        "-framerate",
        RateArgument(settings.fps),
        "-i",
        "pipe:0"};
    for (std::string& argument : FormatArguments(format, settings)) {
        arguments.push_back(std::move(argument));
    }
    arguments.push_back("-y");
    arguments.push_back(output);
    return arguments;
}

}  // namespace wib
