// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/colour_planes.h"

namespace wib {

class ProcessRunner;
class Workspace;

// What ffprobe says of a video's first picture stream.
struct VideoInfo {
    int width = 0;
    int height = 0;
    double fps = 0;      // 0 when it does not say
    int frameCount = 0;  // 0 when it does not say
};

// ffprobe's "key=value" lines (width, height, avg_frame_rate, r_frame_rate,
// nb_frames); nothing without a width and a height. The average rate is
// taken when it is known, else the base rate.
std::optional<VideoInfo> ParseVideoInfo(const std::string& text);

// Every frame of a video, read before anything of the document changes.
struct DecodedVideo {
    int width = 0;
    int height = 0;
    double fps = 0;
    std::vector<ColourPlanes> frames;
};

// Decodes the first picture stream of `path` through ffprobe and ffmpeg into
// planes of the document's shape, at most `maxFrames` of them (all when 0),
// with the status window's progress bar and its Cancel. Nothing after Cancel,
// or, with a message, for a missing, damaged or oversized video, or when the
// memory cannot hold it.
std::optional<DecodedVideo> DecodeVideo(Workspace& workspace, ProcessRunner& processes,
                                        const std::string& path, int maxFrames);

}  // namespace wib
