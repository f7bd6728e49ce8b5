// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/video_import.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <map>
#include <memory>
#include <sstream>

#include "core/document_limits.h"
#include "core/host/process_runner.h"
#include "core/workspace.h"
#include "fileio/file_messages.h"
#include "fileio/rgb_frames.h"
#include "fileio/video_format.h"

namespace wib {

namespace {

constexpr const char* kVideoMemoryMessage =
    "Not enough memory to hold the frames of this video. Import fewer frames (max_frames) or "
    "free some memory.";

std::string ReadFailure(const std::string& path, const std::string& lastLine) {
    std::string message = "The video could not be read: " + path;
    if (!lastLine.empty()) {
        message += "\n" + lastLine;
    }
    return message;
}

int ParseInt(const std::string& text) {
    int value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// "30000/1001", "25/1" or "25"; 0 for "0/0" and anything unreadable.
double ParseRate(const std::string& text) {
    const auto slash = text.find('/');
    const double numerator = ParseInt(text.substr(0, slash));
    const double denominator = slash == std::string::npos ? 1 : ParseInt(text.substr(slash + 1));
    return denominator > 0 ? numerator / denominator : 0;
}

// Everything a process writes to its output, and how it ended.
std::string ReadAll(PipedProcess& process, ProcessEnd& end) {
    std::string text;
    char buffer[4096];
    for (std::size_t got;
         (got = process.read(reinterpret_cast<std::uint8_t*>(buffer), sizeof buffer)) > 0;) {
        text.append(buffer, got);
    }
    end = process.finish();
    return text;
}

std::optional<VideoInfo> Probe(Workspace& workspace, ProcessRunner& processes,
                               const std::string& path) {
    Prompter& prompter = workspace.host.prompter;
    const auto probe = processes.startPiped(
        kFfprobeProgram, {"-v", "error", "-select_streams", "v:0", "-show_entries",
                          "stream=width,height,avg_frame_rate,r_frame_rate,nb_frames", "-of",
                          "default=noprint_wrappers=1", path});
    if (!probe) {
        prompter.message(kFfprobeMissingMessage);
        return std::nullopt;
    }
    ProcessEnd end;
    const std::string text = ReadAll(*probe, end);
    const std::optional<VideoInfo> info = end.exitCode == 0 ? ParseVideoInfo(text) : std::nullopt;
    if (!info) {
        prompter.message(ReadFailure(path, end.lastErrorLine));
        return std::nullopt;
    }
    if (const auto problem = DocumentSizeProblem(info->width, info->height)) {
        prompter.message(*problem);
        return std::nullopt;
    }
    return info;
}

std::vector<std::string> DecodeArguments(const std::string& path, int maxFrames) {
    std::vector<std::string> arguments{"-hide_banner", "-loglevel", "error", "-nostdin",
                                       "-i",           path,        "-map",  "0:v:0"};
    if (maxFrames > 0) {
        arguments.insert(arguments.end(), {"-frames:v", std::to_string(maxFrames)});
    }
    // Every decoded picture once, as it comes, whatever the stream's timing.
    arguments.insert(arguments.end(),
                     {"-fps_mode", "passthrough", "-f", "rawvideo", "-pix_fmt", "rgb24", "pipe:1"});
    return arguments;
}

// Fills `buffer` from the decoder; false when its output ended first.
bool ReadFrame(PipedProcess& decoder, std::vector<std::uint8_t>& buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const std::size_t got = decoder.read(buffer.data() + filled, buffer.size() - filled);
        if (got == 0) {
            return false;
        }
        filled += got;
    }
    return true;
}

}  // namespace

std::optional<VideoInfo> ParseVideoInfo(const std::string& text) {
    std::map<std::string, std::string> fields;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto equals = line.find('=');
        if (equals != std::string::npos && !fields.contains(line.substr(0, equals))) {
            fields[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    VideoInfo info;
    info.width = ParseInt(fields["width"]);
    info.height = ParseInt(fields["height"]);
    if (info.width <= 0 || info.height <= 0) {
        return std::nullopt;
    }
    info.fps = ParseRate(fields["avg_frame_rate"]);
    if (info.fps <= 0) {
        info.fps = ParseRate(fields["r_frame_rate"]);
    }
    info.frameCount = ParseInt(fields["nb_frames"]);
    return info;
}

std::optional<DecodedVideo> DecodeVideo(Workspace& workspace, ProcessRunner& processes,
                                        const std::string& path, int maxFrames) {
    Prompter& prompter = workspace.host.prompter;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        prompter.message(CannotOpenMessage(path));
        return std::nullopt;
    }
    const std::optional<VideoInfo> info = Probe(workspace, processes, path);
    if (!info) {
        return std::nullopt;
    }
    const auto decoder = processes.startPiped(kFfmpegProgram, DecodeArguments(path, maxFrames));
    if (!decoder) {
        prompter.message(kFfmpegMissingMessage);
        return std::nullopt;
    }
    DecodedVideo video{info->width, info->height, info->fps > 0 ? info->fps : 24, {}};
    const int expected = maxFrames > 0 && (info->frameCount == 0 || maxFrames < info->frameCount)
                             ? maxFrames
                             : info->frameCount;
    const std::uint64_t available = workspace.host.system.availableMemoryBytes();
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(info->width) *
                                  static_cast<std::size_t>(info->height) * 3);
    // Each frame is held as three planes with their spare column and row.
    const std::uint64_t frameBytes = std::uint64_t{3} *
                                     static_cast<std::uint64_t>(info->width + 1) *
                                     static_cast<std::uint64_t>(info->height + 1);
    prompter.statusOpen("Importing video");
    prompter.allowCancel();
    std::optional<std::string> refusal;
    while (ReadFrame(*decoder, rgb)) {
        const int count = static_cast<int>(video.frames.size());
        prompter.status("Frame " + std::to_string(count + 1));
        prompter.progress(expected > 0 ? std::min(99, count * 100 / expected) : 0);
        workspace.host.view.processPendingEvents();
        if (prompter.cancelRequested() || workspace.quitPending) {
            refusal = "";
            break;
        }
        if (frameBytes * static_cast<std::uint64_t>(count + 1) > available) {
            refusal = kVideoMemoryMessage;
            break;
        }
        video.frames.push_back(PlanesFromRgb(rgb.data(), info->width, info->height));
    }
    if (refusal) {
        decoder->kill();
    }
    const ProcessEnd end = refusal ? ProcessEnd{} : decoder->finish();
    prompter.statusClose();
    if (refusal) {
        if (!refusal->empty()) {
            prompter.message(*refusal);
        }
        return std::nullopt;
    }
    if (end.exitCode != 0 || video.frames.empty()) {
        prompter.message(ReadFailure(path, end.lastErrorLine));
        return std::nullopt;
    }
    return video;
}

}  // namespace wib
