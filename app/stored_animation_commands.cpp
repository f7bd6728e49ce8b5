// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/stored_animation_commands.h"

#include <cmath>
#include <string>
#include <vector>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/image_edit.h"
#include "core/layered_document.h"
#include "core/workspace.h"
#include "fileio/animation_file.h"

namespace wib {

namespace {

std::vector<KeyframeTrack> TracksOf(const BrushKeyframer& keys) {
    std::vector<KeyframeTrack> tracks;
    for (BrushKey key : kBrushKeys) {
        if (keys.keys(key).empty()) {
            continue;
        }
        KeyframeTrack track{
            BrushKeyName(key),
            keys.spline(key) ? KeyInterpolation::CatmullRom : KeyInterpolation::Linear,
            {}};
        for (const auto& [frame, values] : keys.keys(key)) {
            track.keys.push_back({static_cast<float>(frame), values});
        }
        tracks.push_back(std::move(track));
    }
    return tracks;
}

// Tracks this program does not key, and keys off whole frames, are skipped.
void LoadTracks(BrushKeyframer& keys, const std::vector<KeyframeTrack>& tracks) {
    keys.clear();
    for (const KeyframeTrack& track : tracks) {
        const auto key = BrushKeyNamed(track.name);
        if (!key) {
            continue;
        }
        keys.setSpline(*key, track.interpolation == KeyInterpolation::CatmullRom);
        for (const TrackKey& k : track.keys) {
            if (k.frame >= 0 && k.frame <= kMaxBrushKeyFrame && k.frame == std::floor(k.frame)) {
                keys.addKey(*key, static_cast<int>(k.frame), k.values);
            }
        }
    }
}

bool SaveAnimationFile(Workspace& workspace, FrameStore& store, const std::string& path) {
    StoredAnimation animation;
    animation.picture = PictureOfDocument(workspace);
    animation.frameRate = std::max(1, store.rateField().rate());
    animation.exposures = store.exposures();
    animation.exposures.resize(animation.picture.frames.size(), 1);
    animation.name = store.name();
    animation.tracks = TracksOf(store.brushKeys());
    if (const auto problem = WriteAnimationFile(path, animation)) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    return true;
}

// Reads and checks the whole file before anything changes, asks before an
// animation held is replaced, and replaces last: a damaged file or a No
// leaves what the user holds exactly as it was.
bool OpenAnimationFile(Workspace& workspace, FrameStore& store, const std::string& path) {
    ReadResult<StoredAnimation> read = ReadAnimationFile(path);
    if (!read) {
        workspace.host.prompter.message(read.message);
        return false;
    }
    if (store.FrameCount() > 0 && workspace.host.prompter.choiceBox(
                                      kAnimationExistsQuestion, "Wibbleton", "OK", "Cancel") != 1) {
        return false;
    }
    StoredAnimation& animation = *read.value;
    if (!InstallPicture(workspace, std::move(animation.picture))) {
        return false;
    }
    store.rateField().setRate(animation.frameRate);
    store.setExposures(animation.exposures);
    store.setName(animation.name);
    LoadTracks(store.brushKeys(), animation.tracks);
    SetModified(workspace, false);
    store.showControls();
    return true;
}

}  // namespace

void RegisterStoredAnimationCommands(CommandRegistry& registry, FrameStore& store) {
    registry.add({"anim.save",
                  "&Save animation...",
                  "Animation",
                  "",
                  {FilePathParam("path", "File")},
                  [&store](Workspace& workspace, const ParamValues& values) {
                      return SaveAnimationFile(workspace, store, values.text("path"));
                  }});
    registry.add({"anim.open",
                  "&Open animation...",
                  "Animation",
                  "",
                  {FilePathParam("path", "File")},
                  [&store](Workspace& workspace, const ParamValues& values) {
                      return OpenAnimationFile(workspace, store, values.text("path"));
                  }});
}

}  // namespace wib
