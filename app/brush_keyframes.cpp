// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/brush_keyframes.h"

#include <algorithm>
#include <cmath>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/workspace.h"
#include "paint/paint_session.h"

namespace wib {

namespace {

int Rounded(float value, int low, int high) {
    return std::clamp(static_cast<int>(std::lround(value)), low, high);
}

std::uint8_t Channel(float value) {
    return static_cast<std::uint8_t>(Rounded(value, 0, 255));
}

// The brush's value of one parameter now, as a key stores it.
std::vector<float> CurrentValues(const PaintSession& paint, BrushKey key) {
    const BrushOptionsModel& o = paint.state().options;
    const PackedColour colour = paint.workspace().colours.primary;
    switch (key) {
        case BrushKey::Size:
            return {static_cast<float>(o.brushSize)};
        case BrushKey::Opacity:
            return {static_cast<float>(o.opacity)};
        case BrushKey::Angle:
            return {static_cast<float>(o.baseAngle)};
        case BrushKey::Colour:
            return {static_cast<float>(colour.r), static_cast<float>(colour.g),
                    static_cast<float>(colour.b)};
    }
    return {};
}

ParamSpec KeyParam() {
    ParamSpec spec;
    spec.name = "parameter";
    spec.caption = "Parameter";
    spec.type = ParamType::Choice;
    for (BrushKey key : kBrushKeys) {
        spec.choices.emplace_back(BrushKeyName(key));
    }
    return spec;
}

ParamSpec FrameParam(const FrameStore& frames) {
    return IntegerParam("frame", "Frame", 0, kMaxBrushKeyFrame, 0, [&frames](const Workspace&) {
        return ParamValue{static_cast<long long>(frames.CurrentFrame())};
    });
}

BrushKey KeyOf(const ParamValues& values) {
    return kBrushKeys[static_cast<std::size_t>(values.integer("parameter"))];
}

}  // namespace

void ApplyBrushKeys(PaintSession& paint, const BrushKeyframer& keys, int frame) {
    if (!keys.enabled()) {
        return;
    }
    BrushOptionsModel& o = paint.state().options;
    if (const auto size = keys.valuesAt(BrushKey::Size, frame)) {
        o.brushSize = Rounded(size->front(), 1, 256);
    }
    if (const auto opacity = keys.valuesAt(BrushKey::Opacity, frame)) {
        o.opacity = Rounded(opacity->front(), 0, 255);
    }
    if (const auto angle = keys.valuesAt(BrushKey::Angle, frame)) {
        o.baseAngle = Rounded(angle->front(), 0, 359);
    }
    paint.optionsChanged();
    if (const auto colour = keys.valuesAt(BrushKey::Colour, frame)) {
        paint.setPrimaryColour(
            {Channel((*colour)[0]), Channel((*colour)[1]), Channel((*colour)[2])});
    }
}

BrushKeyHook::BrushKeyHook(PaintSession& paint, FrameStore& frames)
    : strokeStarting_(paint.workspace().events.strokeStarting.subscribe([&paint, &frames] {
          ApplyBrushKeys(paint, frames.brushKeys(),
                         std::min(frames.CurrentFrame(), std::max(frames.FrameCount() - 1, 0)));
      })) {}

void RegisterBrushKeyCommands(CommandRegistry& registry, PaintSession& paint, FrameStore& frames) {
    ParamSpec on = BooleanParam("on", "Keyframe the brush", false);
    on.current = [&frames](const Workspace&) {
        return ParamValue{frames.brushKeys().enabled() ? -1LL : 0LL};
    };
    registry.add({"brush.keyframing",
                  "&Keyframe the brush...",
                  "Brush",
                  "",
                  {on},
                  [&frames](Workspace&, const ParamValues& values) {
                      frames.brushKeys().setEnabled(values.integer("on") != 0);
                      frames.showChanges();
                      return true;
                  }});
    registry.add({"brush.add_key",
                  "Add brush &key...",
                  "Brush",
                  "",
                  {KeyParam(), FrameParam(frames)},
                  [&paint, &frames](Workspace&, const ParamValues& values) {
                      const BrushKey key = KeyOf(values);
                      frames.brushKeys().addKey(key, static_cast<int>(values.integer("frame")),
                                                CurrentValues(paint, key));
                      frames.showChanges();
                      return true;
                  }});
    registry.add({"brush.delete_key",
                  "Delete brush key...",
                  "Brush",
                  "",
                  {KeyParam(), FrameParam(frames)},
                  [&frames](Workspace&, const ParamValues& values) {
                      frames.brushKeys().deleteKey(KeyOf(values),
                                                   static_cast<int>(values.integer("frame")));
                      frames.showChanges();
                      return true;
                  }});
    const ParamSpec kind = ChoiceParam("kind", "Curve", {"linear", "catmull-rom"}, 0);
    registry.add({"brush.key_curve",
                  "Brush key &curve...",
                  "Brush",
                  "",
                  {KeyParam(), kind},
                  [&frames](Workspace&, const ParamValues& values) {
                      frames.brushKeys().setSpline(KeyOf(values), values.integer("kind") == 1);
                      frames.showChanges();
                      return true;
                  }});
}

}  // namespace wib
