// SPDX-License-Identifier: GPL-3.0-or-later
// Timeline edits: moving, duplicating, reversing and pasting ranges of
// frames, and exposures. Every edit rebuilds the stack in its new order from
// a list of sources, so that undo can put any kept order back the same way.

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_map>
#include <utility>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/blit.h"

namespace wib {

std::int32_t FrameStore::exposure(int index) const {
    if (index < 0 || index >= static_cast<int>(exposures_.size())) {
        return 1;
    }
    return exposures_[static_cast<std::size_t>(index)];
}

void FrameStore::setExposure(int index, int ticks) {
    if (index < 0 || index >= static_cast<int>(exposures_.size())) {
        return;
    }
    exposures_[static_cast<std::size_t>(index)] = std::max(ticks, 1);
    showChanges();
}

void FrameStore::setExposures(const std::vector<std::int32_t>& ticks) {
    if (ticks.size() != exposures_.size()) {
        return;
    }
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        exposures_[i] = std::max(ticks[i], 1);
    }
    showChanges();
}

void FrameStore::resetTimeline() {
    const std::vector<std::uint32_t> before = std::move(ids_);
    ids_.clear();
    exposures_.assign(static_cast<std::size_t>(frameCount_), 1);
    for (int f = 0; f < frameCount_; ++f) {
        ids_.push_back(nextId_++);
    }
    history_.retired.clear();
    followPins(before);
    playRange_.in = 0;
    playRange_.out = -1;
}

void FrameStore::followPins(const std::vector<std::uint32_t>& before) {
    std::vector<int>& pinned = workspace_.view.onion.pinned;
    pinned = pins_.follow(pinned, before, ids_,
                          [this](std::uint32_t id) { return history_.retired.contains(id); });
}

std::pair<int, int> FrameStore::clampRange(int first, int last) const {
    const int low = std::clamp(std::min(first, last), 0, frameCount_ - 1);
    const int high = std::clamp(std::max(first, last), 0, frameCount_ - 1);
    return {low, high};
}

FrameStore::FrameSource FrameStore::sourceOf(int index) const {
    return {index, nullptr, ids_[static_cast<std::size_t>(index)],
            exposures_[static_cast<std::size_t>(index)]};
}

LooseFrame FrameStore::looseCopy(int index) {
    const std::size_t bytes = animR_.frameBytes();
    auto plane = [bytes, index](const FrameArray& array) {
        const std::uint8_t* start = array.frame(index);
        return std::vector<std::uint8_t>(start, start + bytes);
    };
    return {plane(animR_), plane(animG_), plane(animB_), LayerCellsOfFrame(workspace_, index),
            exposures_[static_cast<std::size_t>(index)]};
}

bool FrameStore::rebuildFrames(const std::vector<FrameSource>& sources, int current) {
    StopAnimation();
    if (!ready() || sources.empty()) {
        return false;
    }
    StoreCurrentFrame();
    LayersLeavingFrame(workspace_);
    const std::size_t bytes = animR_.frameBytes();
    const auto count = static_cast<int>(sources.size());
    FrameArray r, g, b;
    try {
        r.allocate(bytes, count, 0);
        g.allocate(bytes, count, 0);
        b.allocate(bytes, count, 0);
    } catch (const std::bad_alloc&) {
        workspace_.host.prompter.message(kInsertFrameMemoryMessage);
        return false;
    }
    std::vector<bool> kept(static_cast<std::size_t>(frameCount_), false);
    std::vector<int> layerSources;
    std::vector<std::vector<LayerCell>> given;
    std::vector<std::uint32_t> ids;
    std::vector<std::int32_t> exposures;
    for (int i = 0; i < count; ++i) {
        const FrameSource& source = sources[static_cast<std::size_t>(i)];
        if (source.index >= 0) {
            CopyFramePlanes(stackPlanes(source.index), {r.frame(i), g.frame(i), b.frame(i)}, bytes);
            kept[static_cast<std::size_t>(source.index)] = true;
            given.emplace_back();
        } else {
            std::memcpy(r.frame(i), source.loose->r.data(), bytes);
            std::memcpy(g.frame(i), source.loose->g.data(), bytes);
            std::memcpy(b.frame(i), source.loose->b.data(), bytes);
            given.push_back(source.loose->cells);
        }
        layerSources.push_back(source.index);
        ids.push_back(source.id);
        exposures.push_back(source.exposure);
    }
    // Frames left out wait for a redo while an undo step names them.
    for (int f = 0; f < frameCount_; ++f) {
        if (!kept[static_cast<std::size_t>(f)]) {
            history_.retired.insert_or_assign(ids_[static_cast<std::size_t>(f)], looseCopy(f));
        }
    }
    animR_ = std::move(r);
    animG_ = std::move(g);
    animB_ = std::move(b);
    frameCount_ = count;
    currentFrame_ = std::clamp(current, 0, count - 1);
    const std::vector<std::uint32_t> before = std::exchange(ids_, std::move(ids));
    exposures_ = std::move(exposures);
    LayersFramesMapped(workspace_, layerSources, given);
    history_.prune();
    followPins(before);
    LoadCurrentFrame();
    LayersEnteredFrame(workspace_, currentFrame_);
    showChanges();
    workspace_.host.view.refresh();
    return true;
}

bool FrameStore::MoveFrames(int first, int last, int to) {
    if (frameCount_ == 0) {
        return false;
    }
    const auto [low, high] = clampRange(first, last);
    std::vector<FrameSource> rest;
    for (int f = 0; f < frameCount_; ++f) {
        if (f < low || f > high) {
            rest.push_back(sourceOf(f));
        }
    }
    const int at = std::clamp(to, 0, static_cast<int>(rest.size()));
    std::vector<FrameSource> sources(rest.begin(), rest.begin() + at);
    for (int f = low; f <= high; ++f) {
        sources.push_back(sourceOf(f));
    }
    sources.insert(sources.end(), rest.begin() + at, rest.end());
    // The frame shown moves with the frames.
    const std::uint32_t shown = ids_[static_cast<std::size_t>(storedIndex())];
    const auto it = std::find_if(sources.begin(), sources.end(),
                                 [shown](const FrameSource& s) { return s.id == shown; });
    return rebuildFrames(sources, static_cast<int>(it - sources.begin()));
}

bool FrameStore::DuplicateFrames(int first, int last) {
    if (frameCount_ == 0) {
        return false;
    }
    const auto [low, high] = clampRange(first, last);
    std::vector<FrameSource> sources;
    for (int f = 0; f < frameCount_; ++f) {
        sources.push_back(sourceOf(f));
        if (f == high) {
            for (int d = low; d <= high; ++d) {
                FrameSource copy = sourceOf(d);
                copy.id = nextId_++;
                sources.push_back(copy);
            }
        }
    }
    return rebuildFrames(sources, storedIndex());
}

bool FrameStore::ReverseFrames(int first, int last) {
    if (frameCount_ == 0) {
        return false;
    }
    const auto [low, high] = clampRange(first, last);
    std::vector<FrameSource> sources;
    for (int f = 0; f < frameCount_; ++f) {
        sources.push_back(sourceOf(f < low || f > high ? f : low + high - f));
    }
    const int shown = storedIndex();
    return rebuildFrames(sources, shown < low || shown > high ? shown : low + high - shown);
}

bool FrameStore::InsertBlankFrame(int index) {
    if (frameCount_ == 0 || index < 0 || index >= frameCount_) {
        return false;
    }
    const std::size_t bytes = animR_.frameBytes();
    const LooseFrame blank{std::vector<std::uint8_t>(bytes, 0), std::vector<std::uint8_t>(bytes, 0),
                           std::vector<std::uint8_t>(bytes, 0), BlankFrameCells(workspace_), 1};
    std::vector<FrameSource> sources;
    for (int f = 0; f < frameCount_; ++f) {
        sources.push_back(sourceOf(f));
        if (f == index) {
            sources.push_back({-1, &blank, nextId_++, 1});
        }
    }
    return rebuildFrames(sources, index + 1);
}

bool FrameStore::CopyFrames(int first, int last) {
    if (!ready()) {
        return false;
    }
    const auto [low, high] = clampRange(first, last);
    StoreCurrentFrame();
    LayersLeavingFrame(workspace_);
    clipboard_.clear();
    for (int f = low; f <= high; ++f) {
        clipboard_.push_back(looseCopy(f));
    }
    clipboardLayers_ = static_cast<std::size_t>(LayerCount(workspace_));
    return true;
}

bool FrameStore::PasteFrames(int at) {
    if (frameCount_ == 0) {
        return false;
    }
    if (clipboard_.empty()) {
        workspace_.host.prompter.message(kNothingCopiedMessage);
        return false;
    }
    if (clipboardLayers_ != static_cast<std::size_t>(LayerCount(workspace_)) ||
        clipboard_.front().r.size() != animR_.frameBytes()) {
        workspace_.host.prompter.message(kLayersChangedMessage);
        return false;
    }
    const int before = std::clamp(at, 0, frameCount_);
    std::vector<FrameSource> sources;
    for (int f = 0; f <= frameCount_; ++f) {
        if (f == before) {
            for (const LooseFrame& frame : clipboard_) {
                sources.push_back({-1, &frame, nextId_++, frame.exposure});
            }
        }
        if (f < frameCount_) {
            sources.push_back(sourceOf(f));
        }
    }
    return rebuildFrames(sources, before);
}

TimelineRecord FrameStore::timelineRecord() const {
    return {ids_, exposures_, frameCount_ > 0 ? storedIndex() : 0};
}

void FrameStore::saveTimeline(int slot) {
    history_.keep(slot, timelineRecord());
}

bool FrameStore::timelineMatches(int slot) const {
    const TimelineRecord* record = history_.at(slot);
    return record == nullptr || record->ids.empty() || frameCount_ == 0 ||
           *record == timelineRecord();
}

void FrameStore::showSavedFrame(int slot) {
    const TimelineRecord* record = history_.at(slot);
    // The image the slot keeps belongs to the frame it was saved on.
    if (record != nullptr && frameCount_ > 0 && record->ids == ids_ &&
        record->current != storedIndex()) {
        GotoFrame(record->current, {.frameUpdate = true, .redraw = false});
    }
}

void FrameStore::restoreTimeline(int slot) {
    const TimelineRecord* record = history_.at(slot);
    if (record == nullptr || record->ids.empty() || frameCount_ == 0) {
        return;
    }
    if (record->ids == ids_) {
        // The same frames in the same order: no pixels need to move.
        if (record->exposures.size() == exposures_.size()) {
            exposures_ = record->exposures;
        }
        showSavedFrame(slot);
        showChanges();
        return;
    }
    std::unordered_map<std::uint32_t, int> present;
    for (int f = 0; f < frameCount_; ++f) {
        present.emplace(ids_[static_cast<std::size_t>(f)], f);
    }
    // Frames deleted since, outside any timeline edit, stay deleted; frames
    // kept aside from before a canvas-size change no longer fit and stay out.
    std::vector<FrameSource> sources;
    for (std::size_t i = 0; i < record->ids.size(); ++i) {
        const std::uint32_t id = record->ids[i];
        const std::int32_t ticks = i < record->exposures.size() ? record->exposures[i] : 1;
        if (const auto found = present.find(id); found != present.end()) {
            sources.push_back({found->second, nullptr, id, ticks});
        } else if (const auto loose = history_.retired.find(id);
                   loose != history_.retired.end() &&
                   loose->second.r.size() == animR_.frameBytes()) {
            sources.push_back({-1, &loose->second, id, ticks});
        }
    }
    // The retired frames the sources point at must outlive the rebuild,
    // which may retire others into the same map.
    std::unordered_map<std::uint32_t, LooseFrame> held;
    for (FrameSource& source : sources) {
        if (source.index < 0) {
            held[source.id] = history_.retired.at(source.id);
        }
    }
    for (FrameSource& source : sources) {
        if (source.index < 0) {
            source.loose = &held.at(source.id);
        }
    }
    rebuildFrames(sources, record->current);
}

}  // namespace wib
