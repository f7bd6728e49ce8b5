// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/video_export.h"

#include <filesystem>
#include <vector>

#include "core/atomic_file.h"
#include "core/host/process_runner.h"
#include "core/workspace.h"
#include "fileio/file_messages.h"
#include "fileio/rgb_frames.h"

namespace wib {

namespace {

// The encoder writes under a temporary name; it is removed unless the video
// was moved into place.
class TemporaryOutput {
  public:
    explicit TemporaryOutput(const std::string& target) : path_(TempPathBeside(target)) {}
    ~TemporaryOutput() {
        if (!kept_) {
            std::error_code ignored;
            std::filesystem::remove(path_, ignored);
        }
    }
    TemporaryOutput(const TemporaryOutput&) = delete;
    TemporaryOutput& operator=(const TemporaryOutput&) = delete;

    const std::filesystem::path& path() const { return path_; }
    void kept() { kept_ = true; }

  private:
    std::filesystem::path path_;
    bool kept_ = false;
};

std::string FailureMessage(const std::string& path, const std::string& lastLine) {
    std::string message = "The video could not be written: " + path;
    if (!lastLine.empty()) {
        message += "\n" + lastLine;
    }
    return message;
}

int TotalTicks(const VideoExportJob& job) {
    int ticks = 0;
    for (int index = 0; index < job.frameCount; ++index) {
        ticks += job.exposure(index);
    }
    return ticks;
}

// How feeding the frames ended: the encoder refuses frames once it has
// failed, and says why when it ends.
enum class Feed { Done, Cancelled, Refused };

Feed FeedFrames(Workspace& workspace, PipedProcess& encoder, const VideoExportJob& job) {
    Prompter& prompter = workspace.host.prompter;
    const VideoSettings& settings = job.settings;
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(settings.width) *
                                  static_cast<std::size_t>(settings.height) * 3);
    const int ticks = TotalTicks(job);
    int written = 0;
    for (int index = 0; index < job.frameCount; ++index) {
        prompter.status("Frame " + std::to_string(index + 1) + " of " +
                        std::to_string(job.frameCount));
        prompter.progress(ticks > 0 ? written * 100 / ticks : 0);
        workspace.host.view.processPendingEvents();
        if (prompter.cancelRequested() || workspace.quitPending) {
            return Feed::Cancelled;
        }
        RgbFromPlanes(job.frame(index), settings.width, settings.height, rgb.data());
        for (int copy = job.exposure(index); copy > 0; --copy, ++written) {
            if (!encoder.write(rgb.data(), rgb.size())) {
                return Feed::Refused;
            }
        }
    }
    return Feed::Done;
}

}  // namespace

bool ExportVideo(Workspace& workspace, ProcessRunner& processes, const VideoExportJob& job) {
    Prompter& prompter = workspace.host.prompter;
    const std::optional<VideoFormat> format = VideoFormatOfPath(job.path);
    if (!format) {
        prompter.message("Videos are written as .mp4, .webm, .gif, .png or .avi: " + job.path);
        return false;
    }
    TemporaryOutput output(job.path);
    std::unique_ptr<PipedProcess> encoder = processes.startPiped(
        kFfmpegProgram, EncodeArguments(*format, job.settings, output.path().string()));
    if (!encoder) {
        prompter.message(kFfmpegMissingMessage);
        return false;
    }
    prompter.statusOpen("Exporting video");
    prompter.allowCancel();
    const Feed fed = FeedFrames(workspace, *encoder, job);
    if (fed == Feed::Cancelled) {
        encoder->kill();
        prompter.statusClose();
        workspace.host.log.line("Video export cancelled; nothing was written to " + job.path);
        return false;
    }
    prompter.status("Finishing " + job.path);
    prompter.progress(100);
    const ProcessEnd end = encoder->finish();
    prompter.statusClose();
    std::error_code error;
    const bool written = std::filesystem::file_size(output.path(), error) > 0 && !error;
    if (end.exitCode != 0 || !written) {
        prompter.message(FailureMessage(job.path, end.lastErrorLine));
        return false;
    }
    std::string reason;
    if (!MoveIntoPlace(output.path(), job.path, reason)) {
        prompter.message(CannotWriteMessage(job.path, reason));
        return false;
    }
    output.kept();
    return true;
}

}  // namespace wib
