// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/animation_commands.h"

#include <algorithm>
#include <limits>

#include "anim/animation_plan.h"
#include "anim/frame_rate.h"
#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/discard_question.h"
#include "core/image_edit.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr double kMaxFrames = 1000000;
constexpr double kMaxFrameRate = 1000;

ParamSpec RateParam(std::function<ParamValue(const Workspace&)> current) {
    return NumberParam("rate", "Frame rate (fps)", 0.01, kMaxFrameRate, 0, std::move(current));
}

// The frame the menu's insert and delete act on: the one shown.
int ShownFrame(const FrameStore& store) {
    return std::min(store.CurrentFrame(), store.FrameCount() - 1);
}

// After creation, "Clear to secondary color" makes every frame, and the image
// on screen, that colour; the clearing can be undone like any change.
void ClearEveryFrame(FrameStore& store, PackedColour colour) {
    const ImageEdit edit(store.workspace());
    ClearImage(store.workspace().document, colour);
    store.CopyImageToEveryFrame();
}

bool CreateFromPanel(FrameStore& store, const ParamValues& values) {
    const long long frames = values.integer("frames");
    if (const auto problem = FrameCountProblem(frames)) {
        store.workspace().host.prompter.message(*problem);
        return false;
    }
    const auto contents = static_cast<StartingContents>(values.integer("contents"));
    if (!store.CreateAnimation(static_cast<int>(frames),
                               contents == StartingContents::CopyImage ? 255 : 0)) {
        return false;
    }
    store.rateField().setRate(values.number("rate"));
    if (contents == StartingContents::ClearToSecondary) {
        ClearEveryFrame(store, PackedColour::fromPacked(values.integer("colour"))
                                   .value_or(store.workspace().colours.secondary));
    }
    return true;
}

void RegisterCreate(CommandRegistry& registry, FrameStore& store) {
    const ParamSpec contents =
        ChoiceParam("contents", "Starting contents",
                    {"Copy the image to every frame", "Image on the first frame only",
                     "Clear to secondary color"},
                    0);
    ParamSpec colour = ColourParam("colour", "Secondary color", 0);
    colour.current = [](const Workspace& workspace) {
        return ParamValue{static_cast<long long>(workspace.colours.secondary.packed())};
    };
    registry.add(
        {"anim.create",
         "&Create animation...",
         "Animation",
         "Ctrl+Shift+N",
         {IntegerParam("frames", "Frames", 0, kMaxFrames, 12), RateParam([](const Workspace& w) {
              return ParamValue{FrameRateFromText(DefaultFrameRateText(w.host.preferences))};
          }),
          contents, colour},
         [&store](Workspace&, const ParamValues& values) {
             return CreateFromPanel(store, values);
         }});
}

}  // namespace

void RegisterAnimationCommands(CommandRegistry& registry, FrameStore& store) {
    RegisterCreate(registry, store);

    auto add = [&registry, &store](const char* id, const char* caption, const char* shortcut,
                                   std::function<void(FrameStore&)> action) {
        registry.add({id,
                      caption,
                      "Animation",
                      shortcut,
                      {},
                      [&store, action](Workspace&, const ParamValues&) {
                          action(store);
                          return true;
                      }});
    };
    // Freeing throws the frames away, so unsaved changes are asked about first.
    registry.add({"anim.free",
                  "&Free animation",
                  "Animation",
                  "",
                  {},
                  [&store, &registry](Workspace& workspace, const ParamValues&) {
                      if (store.FrameCount() > 0 && !MayDiscardChanges(workspace, registry)) {
                          return false;
                      }
                      store.FreeAnimation();
                      return true;
                  }});
    add("anim.insert_frame", "&Insert frame", "Ctrl+Shift+I",
        [](FrameStore& s) { s.InsertFrame(ShownFrame(s)); });
    add("anim.delete_frame", "&Delete frame", "Ctrl+Shift+D",
        [](FrameStore& s) { s.DeleteFrame(ShownFrame(s)); });

    registry.add({"anim.goto_frame",
                  "&Go to frame...",
                  "Animation",
                  "Ctrl+G",
                  {IntegerParam("frame", "Frame", 0, std::numeric_limits<std::int32_t>::max(), 0,
                                [&store](const Workspace&) {
                                    return ParamValue{static_cast<long long>(store.CurrentFrame())};
                                })},
                  [&store](Workspace&, const ParamValues& values) {
                      store.showFrame(static_cast<int>(values.integer("frame")));
                      return true;
                  }});

    // Stepping wraps around, as playback does.
    add("anim.first_frame", "F&irst frame", "Home", [](FrameStore& s) { s.showFrame(0); });
    add("anim.previous_frame", "P&revious frame", ",", [](FrameStore& s) {
        const int shown = ShownFrame(s);
        s.showFrame(shown > 0 ? shown - 1 : s.FrameCount() - 1);
    });
    add("anim.next_frame", "&Next frame", ".", [](FrameStore& s) {
        s.showFrame(s.CurrentFrame() + 1 < s.FrameCount() ? s.CurrentFrame() + 1 : 0);
    });
    add("anim.last_frame", "&Last frame", "End",
        [](FrameStore& s) { s.showFrame(s.FrameCount() - 1); });
    add("anim.play", "&Play", "F5", [](FrameStore& s) { s.PlayAnimation(); });
    add("anim.stop", "&Stop", "Esc", [](FrameStore& s) { s.StopAnimation(); });

    registry.add({"anim.frame_rate",
                  "Frame &rate...",
                  "Animation",
                  "",
                  {RateParam([&store](const Workspace&) {
                      return ParamValue{FrameRateFromText(store.rateField().text())};
                  })},
                  [&store](Workspace&, const ParamValues& values) {
                      store.rateField().setRate(values.number("rate"));
                      return true;
                  }});
    add("anim.show_controls", "Playback &controls", "", [](FrameStore& s) { s.showControls(); });
}

}  // namespace wib
