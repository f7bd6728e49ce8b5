// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/timeline_commands.h"

#include <algorithm>
#include <limits>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr double kMaxIndex = std::numeric_limits<std::int32_t>::max();
constexpr double kMaxTicks = 1000;

ParamSpec FrameParam(const char* name, const char* caption, const FrameStore& store) {
    return IntegerParam(name, caption, 0, kMaxIndex, 0, [&store](const Workspace&) {
        return ParamValue{static_cast<long long>(store.CurrentFrame())};
    });
}

int Frame(const ParamValues& values, const char* name) {
    return static_cast<int>(values.integer(name));
}

// A timeline edit: one undo step, like a change of the image.
CommandSpec Edit(const char* id, const char* caption, std::vector<ParamSpec> params,
                 std::function<bool(const ParamValues&)> action) {
    CommandSpec spec{id,
                     caption,
                     "Animation",
                     "",
                     std::move(params),
                     [action](Workspace&, const ParamValues& values) { return action(values); }};
    spec.changesImage = true;
    return spec;
}

CommandSpec Setting(const char* id, const char* caption, std::vector<ParamSpec> params,
                    std::function<bool(const ParamValues&)> action) {
    return {id,
            caption,
            "Animation",
            "",
            std::move(params),
            [action](Workspace&, const ParamValues& values) { return action(values); }};
}

ParamSpec Toggle(const char* name, const char* caption, std::function<bool()> current) {
    ParamSpec spec = BooleanParam(name, caption, false);
    spec.current = [current](const Workspace&) { return ParamValue{current() ? -1LL : 0LL}; };
    return spec;
}

}  // namespace

void RegisterTimelineCommands(CommandRegistry& registry, FrameStore& store) {
    FrameStore* s = &store;
    registry.add(Edit("anim.set_exposure", "Frame &exposure...",
                      {FrameParam("frame", "Frame", store),
                       IntegerParam("ticks", "Held for (ticks)", 1, kMaxTicks, 1,
                                    [s](const Workspace&) {
                                        return ParamValue{
                                            static_cast<long long>(s->exposure(s->CurrentFrame()))};
                                    })},
                      [s](const ParamValues& v) {
                          s->setExposure(Frame(v, "frame"), Frame(v, "ticks"));
                          return s->FrameCount() > 0;
                      }));
    registry.add(Edit("anim.move_frames", "&Move frames...",
                      {FrameParam("first", "First", store), FrameParam("last", "Last", store),
                       FrameParam("to", "To", store)},
                      [s](const ParamValues& v) {
                          return s->MoveFrames(Frame(v, "first"), Frame(v, "last"), Frame(v, "to"));
                      }));
    registry.add(Edit("anim.duplicate_frames", "D&uplicate frames...",
                      {FrameParam("first", "First", store), FrameParam("last", "Last", store)},
                      [s](const ParamValues& v) {
                          return s->DuplicateFrames(Frame(v, "first"), Frame(v, "last"));
                      }));
    registry.add(Edit("anim.reverse_frames", "Re&verse frames...",
                      {FrameParam("first", "First", store), FrameParam("last", "Last", store)},
                      [s](const ParamValues& v) {
                          return s->ReverseFrames(Frame(v, "first"), Frame(v, "last"));
                      }));
    registry.add(Setting(
        "anim.copy_frames", "Cop&y frames...",
        {FrameParam("first", "First", store), FrameParam("last", "Last", store)},
        [s](const ParamValues& v) { return s->CopyFrames(Frame(v, "first"), Frame(v, "last")); }));
    registry.add(Edit("anim.paste_frames", "Pas&te frames...",
                      {FrameParam("at", "Before frame", store)},
                      [s](const ParamValues& v) { return s->PasteFrames(Frame(v, "at")); }));
    registry.add(
        Edit("anim.insert_blank_frame", "Insert &blank frame", {}, [s](const ParamValues&) {
            return s->InsertBlankFrame(std::min(s->CurrentFrame(), s->FrameCount() - 1));
        }));
    registry.add(
        Setting("anim.play_range", "Play ra&nge...",
                {IntegerParam("in", "In", 0, kMaxIndex, 0,
                              [s](const Workspace&) {
                                  return ParamValue{static_cast<long long>(s->playRange().in)};
                              }),
                 IntegerParam("out", "Out (-1: the last frame)", -1, kMaxIndex, -1,
                              [s](const Workspace&) {
                                  return ParamValue{static_cast<long long>(s->playRange().out)};
                              })},
                [s](const ParamValues& v) {
                    s->playRange().in = Frame(v, "in");
                    s->playRange().out = Frame(v, "out");
                    s->showChanges();
                    return true;
                }));
    registry.add(
        Setting("anim.play_mode", "Play &mode...",
                {Toggle("loop", "Loop", [s] { return s->playRange().loop; }),
                 Toggle("ping_pong", "Ping-pong", [s] { return s->playRange().pingPong; })},
                [s](const ParamValues& v) {
                    s->playRange().loop = v.integer("loop") != 0;
                    s->playRange().pingPong = v.integer("ping_pong") != 0;
                    s->showChanges();
                    return true;
                }));
}

}  // namespace wib
