// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/onion_commands.h"

#include <algorithm>
#include <limits>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr std::size_t kMaxPinned = 32;

// The canvas shows the change; the preferences keep it for the next start.
void Changed(Workspace& workspace) {
    SaveOnionState(workspace.view.onion, workspace.host.preferences);
    workspace.events.onionChanged.notify();
    workspace.host.view.refresh();
}

ParamSpec CountParam(const char* name, const char* caption, int OnionState::*count) {
    return IntegerParam(name, caption, 0, kMaxOnionFrames, 2, [count](const Workspace& w) {
        return ParamValue{static_cast<long long>(w.view.onion.*count)};
    });
}

ParamSpec PinnedParam() {
    ParamSpec spec;
    spec.name = "frames";
    spec.caption = "Pinned frames";
    spec.type = ParamType::IntegerList;
    spec.minimum = 0;
    spec.maximum = std::numeric_limits<std::int32_t>::max();
    spec.fallback = IntegerList{};
    for (std::size_t length = 0; length <= kMaxPinned; ++length) {
        spec.lengths.push_back(length);
    }
    spec.current = [](const Workspace& w) {
        return ParamValue{IntegerList(w.view.onion.pinned.begin(), w.view.onion.pinned.end())};
    };
    return spec;
}

}  // namespace

void RegisterOnionCommands(CommandRegistry& registry, FrameStore& store) {
    registry.add({"view.onion",
                  "Onion skin &options...",
                  "View",
                  "",
                  {CountParam("before", "Frames before", &OnionState::before),
                   CountParam("after", "Frames after", &OnionState::after),
                   IntegerParam("opacity", "Opacity", 0, 255, 128,
                                [](const Workspace& w) {
                                    return ParamValue{static_cast<long long>(w.view.onion.opacity)};
                                })},
                  [](Workspace& workspace, const ParamValues& values) {
                      OnionState& onion = workspace.view.onion;
                      onion.before = static_cast<int>(values.integer("before"));
                      onion.after = static_cast<int>(values.integer("after"));
                      onion.opacity = static_cast<int>(values.integer("opacity"));
                      onion.shown = true;
                      Changed(workspace);
                      return true;
                  }});
    registry.add({"view.onion_toggle",
                  "&Onion skin",
                  "View",
                  "Alt+O",
                  {},
                  [](Workspace& workspace, const ParamValues&) {
                      workspace.view.onion.shown = !workspace.view.onion.shown;
                      Changed(workspace);
                      return true;
                  }});
    registry.add({"view.light_table",
                  "Light &table frames...",
                  "View",
                  "",
                  {PinnedParam()},
                  [](Workspace& workspace, const ParamValues& values) {
                      std::vector<int> pinned;
                      for (const long long frame : values.integers("frames")) {
                          pinned.push_back(static_cast<int>(frame));
                      }
                      std::sort(pinned.begin(), pinned.end());
                      pinned.erase(std::unique(pinned.begin(), pinned.end()), pinned.end());
                      workspace.view.onion.pinned = std::move(pinned);
                      Changed(workspace);
                      return true;
                  }});
    registry.add({"view.pin_frame",
                  "&Pin frame to light table",
                  "View",
                  "",
                  {},
                  [&store](Workspace& workspace, const ParamValues&) {
                      if (store.FrameCount() == 0) {
                          return false;
                      }
                      OnionState& onion = workspace.view.onion;
                      const int frame = std::min(store.CurrentFrame(), store.FrameCount() - 1);
                      if (onion.pinned.size() >= kMaxPinned &&
                          std::find(onion.pinned.begin(), onion.pinned.end(), frame) ==
                              onion.pinned.end()) {
                          return false;
                      }
                      TogglePinned(onion, frame);
                      Changed(workspace);
                      return true;
                  }});
}

}  // namespace wib
