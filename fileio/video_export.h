// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "core/colour_planes.h"
#include "fileio/video_format.h"

namespace wib {

class ProcessRunner;
class Workspace;

// A video to write: `frameCount` frames, frame i taken from `frame(i)` and
// written `exposure(i)` times, so that a frame held for k ticks lasts k ticks.
struct VideoExportJob {
    std::string path;
    VideoSettings settings;
    int frameCount = 0;
    std::function<ColourPlanes(int index)> frame;
    std::function<int(int index)> exposure;
};

// Encodes the job through ffmpeg, fed raw frames through a pipe, with the
// status window's progress bar and its Cancel. The video is written under a
// temporary name beside `path` and takes the name only when whole; a missing
// ffmpeg or a failed encode is told with the last line ffmpeg wrote, and
// neither it nor Cancel leaves any file behind. True when the video is in
// place.
bool ExportVideo(Workspace& workspace, ProcessRunner& processes, const VideoExportJob& job);

}  // namespace wib
