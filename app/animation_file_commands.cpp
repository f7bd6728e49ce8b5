// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/animation_file_commands.h"

#include <algorithm>

#include "anim/animation_commands.h"
#include "anim/frame_export.h"
#include "anim/frame_rate.h"
#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/discard_question.h"
#include "core/workspace.h"
#include "fileio/file_commands.h"
#include "fileio/file_filters.h"
#include "fileio/image_sequence.h"
#include "fileio/video_export.h"
#include "fileio/video_import.h"

namespace wib {

namespace {

constexpr const char* kNoAnimationMessage = "There is no animation to export.";
constexpr double kMaxVideoRate = 1000;
constexpr double kMaxImportFrames = 1000000;

ParamSpec PathParam() {
    return TextParam("path", "File", "");
}

bool HasAnimation(FrameStore& store) {
    if (store.FrameCount() == 0) {
        store.workspace().host.prompter.message(kNoAnimationMessage);
        return false;
    }
    return true;
}

// An import replaces the animation, as creating one does, and the image, as
// opening a file does: the user is asked about whichever would be lost.
bool MayReplace(FrameStore& store, const CommandRegistry& registry) {
    Workspace& workspace = store.workspace();
    if (store.FrameCount() > 0) {
        return workspace.host.prompter.choiceBox(kAnimationExistsQuestion, "Wibbleton", "OK",
                                                 "Cancel") == 1;
    }
    return MayDiscardChanges(workspace, registry);
}

std::function<ColourPlanes(int)> FrameSource(FrameStore& store) {
    return [&store](int index) { return FrameImageForExport(store, index); };
}

void RegisterSequenceCommands(CommandRegistry& registry, FrameStore& store,
                              ConverterBridge& converter) {
    registry.add({"anim.export_sequence",
                  "Export image se&quence...",
                  "Animation",
                  "",
                  {PathParam(), TextParam("type", "Type", kSaveTypeDefaultTarga)},
                  [&store, &converter](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      if (!HasPath(workspace, path) || !HasAnimation(store)) {
                          return false;
                      }
                      SequenceExportJob job;
                      job.first = path;
                      job.settings.type = values.text("type");
                      job.width = workspace.document.width;
                      job.height = workspace.document.height;
                      job.frameCount = store.FrameCount();
                      job.frame = FrameSource(store);
                      job.alpha = &workspace.document.ABuffer;
                      return WriteImageSequence(workspace, converter, job);
                  }});
    registry.add({"anim.import_sequence",
                  "I&mport image sequence...",
                  "Animation",
                  "",
                  {PathParam()},
                  [&store, &converter, &registry](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      if (!HasPath(workspace, path) || !MayReplace(store, registry)) {
                          return false;
                      }
                      auto sequence = ReadImageSequence(workspace, converter, path);
                      return sequence &&
                             ReplaceAnimation(store, sequence->width, sequence->height,
                                              std::move(sequence->frames),
                                              FrameRateFromText(store.rateField().text()));
                  }});
}

void RegisterVideoCommands(CommandRegistry& registry, FrameStore& store, ProcessRunner& processes) {
    const ParamSpec fps =
        NumberParam("fps", "Frame rate (fps)", 0.01, kMaxVideoRate, 0, [&store](const Workspace&) {
            return ParamValue{std::max(1.0, FrameRateFromText(store.rateField().text()))};
        });
    registry.add({"anim.export_video",
                  "Export &video...",
                  "Animation",
                  "",
                  {PathParam(), fps},
                  [&store, &processes](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      if (!HasPath(workspace, path) || !HasAnimation(store)) {
                          return false;
                      }
                      VideoExportJob job;
                      job.path = path;
                      job.settings.width = workspace.document.width;
                      job.settings.height = workspace.document.height;
                      job.settings.fps = values.number("fps");
                      job.frameCount = store.FrameCount();
                      job.frame = FrameSource(store);
                      job.exposure = [&store](int index) { return FrameExposure(store, index); };
                      return ExportVideo(workspace, processes, job);
                  }});
    registry.add({"anim.import_video",
                  "Import vi&deo...",
                  "Animation",
                  "",
                  {PathParam(),
                   IntegerParam("max_frames", "Most frames (0 for all)", 0, kMaxImportFrames, 0)},
                  [&store, &processes, &registry](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      if (!HasPath(workspace, path) || !MayReplace(store, registry)) {
                          return false;
                      }
                      auto video = DecodeVideo(workspace, processes, path,
                                               static_cast<int>(values.integer("max_frames")));
                      return video && ReplaceAnimation(store, video->width, video->height,
                                                       std::move(video->frames), video->fps);
                  }});
}

}  // namespace

void RegisterAnimationFileCommands(CommandRegistry& registry, FrameStore& store,
                                   ConverterBridge& converter, ProcessRunner& processes) {
    RegisterSequenceCommands(registry, store, converter);
    RegisterVideoCommands(registry, store, processes);
}

}  // namespace wib
