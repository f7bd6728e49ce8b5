// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/brush_controls.h"

#include <algorithm>
#include <cstring>

#include "paint/brush_shape.h"
#include "paint/paint_modes.h"

namespace wib {

namespace {

// Table rows bound to a member of BrushOptionsModel.
#define WIB_INT(member)                                                    \
    [](const BrushOptionsModel& o) { return static_cast<int>(o.member); }, \
        [](BrushOptionsModel& o, int v) { o.member = v; }
#define WIB_BOOL(member)                                         \
    [](const BrushOptionsModel& o) { return o.member ? 1 : 0; }, \
        [](BrushOptionsModel& o, int v) { o.member = v != 0; }

std::vector<BrushControl> MakeControls() {
    const char* B = "BrushOptions";
    const char* P = "Paper_Panel";
    using K = ControlKind;
    std::vector<BrushControl> controls{
        {0,
         B,
         {"Option1", "Option2", "Option3"},
         K::Group,
         0,
         2,
         0,
         "Quality",
         WIB_INT(transformQuality)},
        {1, B, {"Check5"}, K::Toggle, 0, 1, 0, "Pressure to size", WIB_BOOL(pressureToSize)},
        {2, B, {"Check7"}, K::Toggle, 0, 1, 0, "Pressure to opacity", WIB_BOOL(pressureToOpacity)},
        {3, B, {"Hscroll9"}, K::Slider, -25, 25, 0, "Speed to size", WIB_INT(speedToSize)},
        {4, B, {"HScroll1"}, K::Slider, 1, 256, 0, "Size", WIB_INT(brushSize)},
        {5, B, {"hscroll4"}, K::Slider, 0, 35, 0, "Size jitter", WIB_INT(sizeJitter)},
        {6, B, {"hscroll3"}, K::Slider, 0, 180, 0, "Angle jitter", WIB_INT(angleJitter)},
        {7, B, {"Check1"}, K::Toggle, 0, 1, 0, "Follow stroke", WIB_BOOL(followStroke)},
        {8, B, {"hscroll2"}, K::Slider, 0, 360, 0, "Hue jitter", WIB_INT(hueJitter)},
        {9, B, {"HScroll6"}, K::Slider, 0, 100, 0, "Saturation jitter", WIB_INT(saturationJitter)},
        {10, B, {"Hscroll7"}, K::Slider, 0, 100, 0, "Value jitter", WIB_INT(valueJitter)},
        {11, B, {"hscroll5"}, K::Slider, 0, 255, 0, "Colour pick-up", WIB_INT(colourPickUp)},
        {12, B, {"Hscroll8"}, K::Slider, 0, 384, 0, "Dry out", WIB_INT(dryOut)},
        {13,
         B,
         {"kq_button1", "kq_button2"},
         K::Group,
         0,
         2,
         1,
         "Selection",
         [](const BrushOptionsModel& o) { return static_cast<int>(o.alphaUse); },
         [](BrushOptionsModel& o, int v) { o.alphaUse = static_cast<AlphaUse>(v); }},
        {14,
         B,
         {"Check3"},
         K::Toggle,
         0,
         1,
         0,
         "Transform image brush",
         WIB_BOOL(imageBrushTransform)},
        {15, B, {"HProp1"}, K::Slider, 0, 255, 0, "Opacity", WIB_INT(opacity)},
        {16, B, {"HProp2"}, K::Slider, 0, 500, 0, "Spacing", WIB_INT(spacing)},
        {17, B, {"HProp3"}, K::Slider, 0, 359, 0, "Angle", WIB_INT(baseAngle)},
        {18, B, {"HProp4"}, K::Slider, 1, 400, 0, "Image brush scale %", WIB_INT(imageBrushScale)},
        {19,
         B,
         {"Check2"},
         K::Toggle,
         0,
         1,
         0,
         "Spacing relative to size",
         WIB_BOOL(relativeSpacing)},
        {20, B, {"Check4"}, K::Toggle, 0, 1, 0, "Live preview", WIB_BOOL(livePreview)},
        {21, B, {"kq_button6"}, K::Toggle, 0, 1, 0, "Paper texture", WIB_BOOL(paperTexture)},
        {22, B, {"HProp8"}, K::Slider, 0, 255, 0, "Fade", WIB_INT(fade)},
        {23, B, {"kq_button7"}, K::Toggle, 0, 1, 0, "Mirror left-right", WIB_BOOL(mirrorLeftRight)},
        {24, B, {"kq_button8"}, K::Toggle, 0, 1, 0, "Mirror top-bottom", WIB_BOOL(mirrorTopBottom)},
        {25, B, {"kq_button9"}, K::Toggle, 0, 1, 0, "Radial symmetry", WIB_BOOL(radialSymmetry)},
        {26, B, {"HProp5"}, K::Slider, 2, 10, 0, "Radial copies", WIB_INT(radialCopies)},
        {27, B, {"HProp6"}, K::Slider, 0, 100, 0, "Centre x %", WIB_INT(symmetryCentreX)},
        {28, B, {"HProp7"}, K::Slider, 0, 100, 0, "Centre y %", WIB_INT(symmetryCentreY)},
        {29, B, {"kq_button10"}, K::Toggle, 0, 1, 0, "Aligned clone", WIB_BOOL(cloneAligned)},
        {30, nullptr, {}, K::Slider, 0, 3, 0, "Built-in brush", WIB_INT(builtinBrush)},
        {31, B, {"KQ_Dropslider3"}, K::Slider, 0, 11, 0, "Paint mode", WIB_INT(paintMode)},
        {32, B, {"KQ_DropSlider1"}, K::Slider, 0, 100, 0, "Hardness", WIB_INT(hardness)},
        {33, B, {"kq_dropslider2"}, K::Slider, 3, 64, 0, "Bristles", WIB_INT(bristles)},
        {34, nullptr, {}, K::Slider, 10, 4000, 0, "Brush scale", WIB_INT(brushScaleThousandths)},
        {35,
         B,
         {"kq_button18"},
         K::Toggle,
         0,
         1,
         0,
         "Erase to secondary colour",
         WIB_BOOL(eraseToSecondary)},
        {36,
         B,
         {"kq_button17"},
         K::Toggle,
         0,
         1,
         0,
         "Pick up outside the selection",
         WIB_BOOL(pickUpIgnoresAlpha)},
        {39, P, {"HScroll6"}, K::Slider, 0, 100, 0, "Grain depth", WIB_INT(paperStrength)},
        {40, P, {"Check1"}, K::Toggle, 0, 1, 0, "Invert grain", WIB_BOOL(paperInvert)},
        {41,
         P,
         {"Check2"},
         K::Toggle,
         0,
         1,
         0,
         "Move grain at each dab",
         WIB_BOOL(paperShiftPerDab)},
        {42, P, {"Check3"}, K::Toggle, 0, 1, 0, "Emboss grain", WIB_BOOL(paperEmboss)},
        {43, P, {"HProp1"}, K::Slider, 25, 400, 0, "Grain scale %", WIB_INT(paperScale)},
    };
    for (BrushControl& control : controls) {
        switch (control.field) {
            case 0:
                control.buttonCaptions = {"Nearest", "Bilinear", "Supersampled"};
                break;
            case 13:
                control.buttonCaptions = {"Paint on matte", "Ignore selection"};
                break;
            case 30:
                control.valueName = [](int v) {
                    return BuiltinBrushName(static_cast<BuiltinBrush>(v));
                };
                break;
            case 31:
                control.valueName = PaintModeName;
                break;
            default:
                break;
        }
    }
    return controls;
}

#undef WIB_INT
#undef WIB_BOOL

}  // namespace

const std::vector<BrushControl>& BrushControls() {
    static const std::vector<BrushControl> controls = MakeControls();
    return controls;
}

const BrushControl* FindBrushControl(const char* panel, const char* name) {
    for (const BrushControl& control : BrushControls()) {
        if (control.panel == nullptr || std::strcmp(control.panel, panel) != 0) {
            continue;
        }
        for (const char* candidate : control.names) {
            if (std::strcmp(candidate, name) == 0) {
                return &control;
            }
        }
    }
    return nullptr;
}

bool SetBrushControl(BrushOptionsModel& options, const BrushControl& control, int value) {
    if (control.kind == ControlKind::Group) {
        // A value below the first button's means no button down, where allowed.
        if (value < control.minimum || value > control.maximum) {
            return false;
        }
        control.set(options, value);
        return true;
    }
    control.set(options, std::clamp(value, control.minimum, control.maximum));
    return true;
}

BrushSettingsRecord PackBrushSettings(const BrushOptionsModel& options) {
    BrushSettingsRecord record{};
    for (const BrushControl& control : BrushControls()) {
        record[static_cast<std::size_t>(control.field)] = control.get(options);
    }
    return record;
}

void UnpackBrushSettings(const BrushSettingsRecord& record, BrushOptionsModel& options) {
    options.livePreview = false;
    for (const BrushControl& control : BrushControls()) {
        const int value = record[static_cast<std::size_t>(control.field)];
        // A group presses only the button the field names: a field that names
        // none leaves the group as it was.
        if (control.kind == ControlKind::Group && value < control.firstValue) {
            continue;
        }
        SetBrushControl(options, control, value);
    }
}

}  // namespace wib
