#include "anim/animation_commands.h"

#include <algorithm>
#include <limits>

#include "anim/animation_plan.h"
#include "anim/frame_methods.h"
#include "anim/frame_rate.h"
#include "anim/frame_store.h"
#include "core/buffer_access.h"
#include "core/commands.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr double kMaxFrames = 1000000;
constexpr double kMaxFrameRate = 1000;

ParamSpec RateParam(std::function<ParamValue(const Workspace&)> current) {
    ParamSpec spec;
    spec.name = "rate";
    spec.caption = "Frame rate (fps)";
    spec.type = ParamType::Number;
    spec.minimum = 0.01;
    spec.maximum = kMaxFrameRate;
    spec.current = std::move(current);
    return spec;
}

// The frame the menu's insert and delete act on: the one shown.
int ShownFrame(const FrameStore& store) {
    return std::min(store.CurrentFrame(), store.FrameCount() - 1);
}

// After creation, "Clear to secondary color" makes every frame, and the image
// on screen, that colour; the clearing can be undone like any change.
void ClearEveryFrame(FrameStore& store, long long colour) {
    Workspace& workspace = store.workspace();
    Wib_SaveUndo(workspace);
    Wib_ClearBuffer(workspace.document, static_cast<std::uint8_t>(colour & 0xFF),
                    static_cast<std::uint8_t>((colour >> 8) & 0xFF),
                    static_cast<std::uint8_t>((colour >> 16) & 0xFF));
    workspace.document.ModifiedFlag = 255;
    store.CopyImageToEveryFrame();
    workspace.host.view.refresh();
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
    store.setFrameRateField(FrameRateText(values.number("rate")));
    if (contents == StartingContents::ClearToSecondary) {
        ClearEveryFrame(store, values.integer("colour"));
    }
    return true;
}

void RegisterCreate(CommandRegistry& registry, FrameStore& store,
                    std::function<std::int32_t()> secondaryColour) {
    ParamSpec contents;
    contents.name = "contents";
    contents.caption = "Starting contents";
    contents.type = ParamType::Choice;
    contents.choices = {"Copy the image to every frame", "Image on the first frame only",
                        "Clear to secondary color"};
    ParamSpec colour;
    colour.name = "colour";
    colour.caption = "Secondary color";
    colour.type = ParamType::Colour;
    colour.current = [secondaryColour](const Workspace&) {
        return ParamValue{static_cast<long long>(secondaryColour())};
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

void RegisterAnimationCommands(CommandRegistry& registry, FrameStore& store,
                               std::function<std::int32_t()> secondaryColour) {
    RegisterCreate(registry, store, std::move(secondaryColour));

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
    add("anim.free", "&Free animation", "", Wib_FreeAnim);
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
                      Wib_GotoFrame(store, static_cast<int>(values.integer("frame")));
                      return true;
                  }});

    // Stepping wraps around, as playback does.
    add("anim.first_frame", "F&irst frame", "Home", [](FrameStore& s) { Wib_GotoFrame(s, 0); });
    add("anim.previous_frame", "P&revious frame", ",", [](FrameStore& s) {
        const int shown = ShownFrame(s);
        Wib_GotoFrame(s, shown > 0 ? shown - 1 : s.FrameCount() - 1);
    });
    add("anim.next_frame", "&Next frame", ".", [](FrameStore& s) {
        Wib_GotoFrame(s, s.CurrentFrame() + 1 < s.FrameCount() ? s.CurrentFrame() + 1 : 0);
    });
    add("anim.last_frame", "&Last frame", "End",
        [](FrameStore& s) { Wib_GotoFrame(s, s.FrameCount() - 1); });
    add("anim.play", "&Play", "F5", Wib_PlayAnimation);
    add("anim.stop", "&Stop", "Esc", Wib_StopAnimation);

    registry.add({"anim.frame_rate",
                  "Frame &rate...",
                  "Animation",
                  "",
                  {RateParam([&store](const Workspace&) {
                      return ParamValue{FrameRateFromText(store.frameRateField())};
                  })},
                  [&store](Workspace&, const ParamValues& values) {
                      Wib_SetFrameRate(store, values.number("rate"));
                      return true;
                  }});
    add("anim.show_controls", "Playback &controls", "", Wib_ShowScrub);
}

}  // namespace wib
