// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/stroke_engine.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "core/workspace.h"
#include "paint/dab_compositor.h"
#include "paint/paint_state.h"
#include "paint/paint_surface.h"
#include "pixel/colour.h"
#include "pixel/rounding.h"

namespace wib {

namespace {

// The nominal width of a built-in brush, which relative spacing is measured in.
constexpr double kBuiltinNominalWidth = 35.0;
constexpr std::uint32_t kTipSeed = 0xB21577E5;

double Uniform(Workspace& workspace) {
    return std::uniform_real_distribution<double>(0.0, 1.0)(workspace.random);
}

struct SegmentShape {
    double scale = 1.0;
    double angle = 0.0;
};

bool ShapeVaries(const PaintState& paint, double brushScale) {
    const BrushOptionsModel& o = paint.options;
    const bool pen = paint.tabletActive && o.pressureToSize;
    // A larger scale or a base angle alone leaves the dab as it is: only these
    // variations, or a reduced scale, start the transform.
    return o.sizeJitter >= 1 || o.angleJitter >= 1 || o.followStroke || o.speedToSize != 0 || pen ||
           brushScale < 1.0;
}

SegmentShape ComputeShape(Workspace& workspace, const PaintState& paint, float x, float y) {
    const BrushOptionsModel& o = paint.options;
    const double brushScale = o.brushScaleThousandths / 1000.0;
    SegmentShape shape;
    if (!ShapeVaries(paint, brushScale)) {
        return shape;
    }
    if (o.sizeJitter >= 1) {
        shape.scale = 1.0 - (o.sizeJitter * Uniform(workspace)) / 35.0;
    }
    if (o.angleJitter >= 1) {
        const double r1 = Uniform(workspace);
        const double r2 = Uniform(workspace);
        shape.angle = r1 * o.angleJitter - o.angleJitter * r2;
    }
    const double dx = x - paint.stroke.previousX;
    const double dy = y - paint.stroke.previousY;
    if (o.followStroke && (dx != 0.0 || dy != 0.0)) {
        shape.angle += std::atan2(dy, dx) * 180.0 / std::numbers::pi - 90.0;
    }
    if (o.speedToSize != 0) {
        const double d = RoundHalfEven(std::sqrt(dx * dx + dy * dy));
        double f = 1.0 / (d / (25.1 - std::abs(o.speedToSize)) + 1.0);
        if (o.speedToSize < 0) {
            f = 1.0 - f;
        }
        shape.scale *= f;
    }
    shape.angle += o.baseAngle;
    if (o.pressureToSize && paint.tabletActive) {
        shape.scale *= paint.pressure;
    }
    shape.scale *= brushScale;
    return shape;
}

// The image the next dab paints with: the animated brush's current frame, the
// image brush, or none (the built-in brush).
const BrushImage* ImageBrush(const Workspace& workspace, const PaintState& paint) {
    if (paint.animatedBrush.active()) {
        return &paint.animatedBrush.currentFrame();
    }
    return workspace.brush.active() ? &workspace.brush : nullptr;
}

// The brush mask for this segment, rebuilt only when the shape changed.
const Plane* SegmentMask(PaintState& paint, const BrushImage* image, const SegmentShape& shape) {
    StrokeState& stroke = paint.stroke;
    const BrushOptionsModel& o = paint.options;
    if (image != nullptr) {
        const Plane& mask = image->mask();
        if (!o.imageBrushTransform) {
            return &mask;
        }
        const double scale = shape.scale * o.imageBrushScale / 100.0;
        if (shape.angle == 0.0 && scale == 1.0) {
            return &mask;
        }
        stroke.builtMask =
            TransformBrush(TipFromMask(mask), shape.angle, scale, o.transformQuality);
        stroke.builtSource = -1;
        return &*stroke.builtMask;
    }
    if (paint.tip.coverage.empty()) {
        RebuildBuiltinTip(paint);
    }
    if (!stroke.builtMask || stroke.builtSource != paint.tipGeneration ||
        stroke.builtAngle != shape.angle || stroke.builtScale != shape.scale) {
        stroke.builtMask = TransformBrush(paint.tip, shape.angle, shape.scale, o.transformQuality);
        stroke.builtSource = paint.tipGeneration;
        stroke.builtAngle = shape.angle;
        stroke.builtScale = shape.scale;
    }
    return &*stroke.builtMask;
}

double SpacingThreshold(const PaintState& paint, const BrushImage* image, double scale) {
    const BrushOptionsModel& o = paint.options;
    if (!o.relativeSpacing) {
        return o.spacing;
    }
    if (image == nullptr) {
        return scale * kBuiltinNominalWidth * o.spacing / 100.0;
    }
    const double width = static_cast<double>(image->mask().stride());
    if (o.imageBrushTransform) {
        return o.spacing / 100.0 * (o.imageBrushScale / 100.0) * scale * width;
    }
    return o.spacing / 100.0 * width * scale;
}

std::array<int, 3> JitterColour(Workspace& workspace, const BrushOptionsModel& o,
                                const std::array<int, 3>& colour) {
    if (o.hueJitter <= 0 && o.saturationJitter <= 0 && o.valueJitter <= 0) {
        return colour;
    }
    double h, s, v;
    RGB_To_HSV(colour[0] / 255.0, colour[1] / 255.0, colour[2] / 255.0, h, s, v);
    const double rh = Uniform(workspace);
    const double rs = Uniform(workspace);
    const double rv = Uniform(workspace);
    h += 2.0 * (rh - 0.5) * (o.hueJitter / 360.0) * 360.0;
    h = std::fmod(RoundHalfEvenValue(h), 360.0);
    h += h < 0 ? 360.0 : 0.0;
    s += 2.0 * (0.5 - rs) * (o.saturationJitter / 100.0);
    if (s == 0.0) {
        h = -1.0;
    }
    v += 2.0 * (0.5 - rv) * (o.valueJitter / 100.0);
    // Saturation and value may leave 0..1 here; only the channels are clamped.
    double r, g, b;
    HSV_To_RGB(h, s, v, r, g, b);
    return {std::clamp(RoundHalfEven(r * 255), 0, 255), std::clamp(RoundHalfEven(g * 255), 0, 255),
            std::clamp(RoundHalfEven(b * 255), 0, 255)};
}

// The colour under the previous position, from it and the four pixels around
// it when it lies well inside the image, counting only selected pixels.
std::array<int, 3> PickUp(const PaintSurface& surface, const PaintState& paint,
                          const std::array<int, 3>& colour) {
    const int width = surface.width;
    const int height = surface.height;
    const int k = paint.options.colourPickUp;
    const int x = std::clamp(static_cast<int>(paint.stroke.previousX), 0, std::max(0, width - 2));
    const int y = std::clamp(static_cast<int>(paint.stroke.previousY), 0, std::max(0, height - 2));
    const bool ignoreAlpha = paint.options.pickUpIgnoresAlpha;
    int sum[3] = {0, 0, 0};
    int samples = 0;
    auto sample = [&](int sx, int sy) {
        if (!ignoreAlpha && surface.alpha->row(sy)[sx] <= 128) {
            return;
        }
        for (int c = 0; c < 3; ++c) {
            sum[c] += surface.colour[c]->row(sy)[sx];
        }
        ++samples;
    };
    sample(x, y);
    if (x > 1 && y > 1 && x < width - 2 && y < height - 2) {
        sample(x - 1, y);
        sample(x + 1, y);
        sample(x, y - 1);
        sample(x, y + 1);
    }
    if (samples == 0) {
        return colour;
    }
    std::array<int, 3> mixed;
    for (int c = 0; c < 3; ++c) {
        const int picked = sum[c] / samples;
        mixed[c] = RoundHalfEven(k * picked + (255 - k) * colour[c]) / 255;
    }
    return mixed;
}

void MarkDirty(PaintState& paint, const PaintSurface& surface, bool imageBrush, float startX,
               float startY, float endX, float endY, const Plane& mask) {
    // The panel's margin, widened where the dab itself is larger, so that the
    // repaint always covers what was painted.
    const int half = static_cast<int>(std::max(mask.stride(), mask.rows()) / 2) + 1;
    const int margin = std::max(paint.options.brushSize, half);
    const int far = imageBrush ? 0 : 2;
    DirtyRect& dirty = paint.stroke.dirty;
    dirty.left = static_cast<int>(std::floor(std::min(startX, endX))) - margin;
    dirty.top = static_cast<int>(std::floor(std::min(startY, endY))) - margin;
    dirty.right = static_cast<int>(std::ceil(std::max(startX, endX))) + margin + far;
    dirty.bottom = static_cast<int>(std::ceil(std::max(startY, endY))) + margin + far;
    if (!(paint.repaintSuspended && !imageBrush) && surface.changed) {
        surface.changed(dirty);
    }
}

std::array<int, 3> AsInts(PackedColour colour) {
    return {colour.r, colour.g, colour.b};
}

}  // namespace

void RebuildBuiltinTip(PaintState& paint) {
    const BrushOptionsModel& o = paint.options;
    const int diameter = std::clamp(o.brushSize, 1, 1024);
    const int slot = std::clamp(o.builtinBrush, 0, kBuiltinBrushCount - 1);
    if (const auto& replaced = paint.replacedTips[static_cast<std::size_t>(slot)]) {
        paint.tip = ScaleTip(*replaced, diameter);
        ++paint.tipGeneration;
        return;
    }
    switch (static_cast<BuiltinBrush>(slot)) {
        case BuiltinBrush::HardRound:
            paint.tip = MakeRoundBrush(diameter, o.hardness);
            break;
        case BuiltinBrush::SoftAirbrush:
            paint.tip = MakeAirbrush(diameter);
            break;
        case BuiltinBrush::Bristle:
            paint.tip = MakeBristleBrush(diameter, o.bristles, kTipSeed);
            break;
        case BuiltinBrush::Chalk:
            paint.tip = MakeChalkBrush(diameter, paint.chalkProfile, kTipSeed);
            break;
    }
    ++paint.tipGeneration;
}

namespace {

// How far the smooth brush's pen moves toward the pointer at each event.
constexpr float kSmoothFollow = 0.35f;

void MainBrushStep(Workspace& workspace, PaintState& paint, PaintSurface& surface, int button,
                   float x, float y);

// The stroke procedure of the smooth brush type: the pen trails the pointer
// like a brush on a string, so hand jitter is evened out, and the main
// procedure paints along the pen's path.
void SmoothBrushStep(Workspace& workspace, PaintState& paint, PaintSurface& surface, int button,
                     float x, float y) {
    StrokeState& stroke = paint.stroke;
    if (button == 0) {
        stroke.smoothX = x;
        stroke.smoothY = y;
    } else {
        stroke.smoothX += (x - stroke.smoothX) * kSmoothFollow;
        stroke.smoothY += (y - stroke.smoothY) * kSmoothFollow;
    }
    MainBrushStep(workspace, paint, surface, button, stroke.smoothX, stroke.smoothY);
}

}  // namespace

void BrushStep(Workspace& workspace, PaintState& paint, std::int16_t& button, std::int16_t& shift,
               float& x, float& y) {
    static_cast<void>(shift);
    const float zoom = workspace.view.scale();
    x /= zoom;
    y /= zoom;
    PaintSurface surface = WorkspaceSurface(workspace);
    if (paint.brushType == BrushType::Smooth) {
        SmoothBrushStep(workspace, paint, surface, button, x, y);
    } else {
        MainBrushStep(workspace, paint, surface, button, x, y);
    }
}

namespace {

// One segment in image pixels, painted onto the surface.
void MainBrushStep(Workspace& workspace, PaintState& paint, PaintSurface& surface, int button,
                   float x, float y) {
    const BrushOptionsModel& o = paint.options;
    StrokeState& stroke = paint.stroke;
    if (button == 0) {
        stroke.previousX = x;
        stroke.previousY = y;
        stroke.strokeOpacity = static_cast<float>(std::clamp(o.opacity, 0, 255));
        return;
    }
    if (surface.empty()) {
        return;
    }

    const SegmentShape shape = ComputeShape(workspace, paint, x, y);
    const bool animated = paint.animatedBrush.active();
    const BrushImage* image = ImageBrush(workspace, paint);
    const Plane* mask = SegmentMask(paint, image, shape);
    if (mask == nullptr || mask->empty()) {
        return;
    }
    const float startX = stroke.previousX;
    const float startY = stroke.previousY;
    const double dx = x - startX;
    const double dy = y - startY;
    const int length = std::max(1, RoundHalfEven(std::sqrt(dx * dx + dy * dy)));
    const double pressure =
        o.pressureToOpacity && paint.tabletActive ? std::clamp(paint.pressure, 0.0, 1.0) : 1.0;
    const double threshold = SpacingThreshold(paint, image, shape.scale);

    // Caps Lock erases: with the secondary colour, or by bringing back the
    // swap buffer.
    // The eraser tool lays the secondary colour plainly, or takes coverage
    // away on a layer that has it.
    const bool erasing = workspace.eraseMode && !paint.erasing;
    const std::array<int, 3> colour =
        AsInts(button == 2 || erasing || paint.erasing ? workspace.colours.secondary
                                                       : workspace.colours.primary);
    const int mode = paint.erasing ? static_cast<int>(PaintMode::Plain)
                     : erasing && !o.eraseToSecondary
                         ? static_cast<int>(PaintMode::FromSwap)
                         : std::clamp(o.paintMode, 0, kPaintModeCount - 1);

    for (int i = 0; i <= length; ++i) {
        const double px = startX + dx * i / length;
        const double py = startY + dy * i / length;
        stroke.spacingCounter = static_cast<std::int16_t>(stroke.spacingCounter + 1);
        if (stroke.spacingCounter > threshold) {
            stroke.spacingCounter = 1;
        }
        if (stroke.spacingCounter != 1) {
            continue;
        }
        if (animated) {
            // Each dab takes the animated brush's next frame, its colours
            // included for the pattern modes.
            image = &paint.animatedBrush.currentFrame();
            mask = SegmentMask(paint, image, shape);
            surface.pattern = {&image->R, &image->G, &image->B};
            paint.animatedBrush.advance();
        }
        // Masks made here are square with padded rows; an image brush's own is not.
        const int maskWidth =
            image != nullptr && mask == &image->mask() ? 0 : static_cast<int>(mask->rows());
        std::uniform_int_distribution<int> offset(0, 1 << 15);
        const int shiftX = offset(workspace.random);
        const int shiftY = offset(workspace.random);
        std::array<int, 3> dabColour = JitterColour(workspace, o, colour);
        if (button == 1 && o.dryOut > 0) {
            stroke.strokeOpacity =
                std::clamp(stroke.strokeOpacity * (1.0f - o.dryOut / 384.0f), 0.0f, 255.0f);
        }
        if (o.colourPickUp > 0) {
            dabColour = PickUp(surface, paint, dabColour);
        }
        if (button == 2 || paint.erasing) {
            dabColour = AsInts(workspace.colours.secondary);
        }
        stroke.dabColour = dabColour;
        const Dab dab{mask,
                      px,
                      py,
                      RoundHalfEven(stroke.strokeOpacity * pressure),
                      dabColour,
                      o.paperShiftPerDab ? shiftX : 0,
                      o.paperShiftPerDab ? shiftY : 0,
                      mode,
                      maskWidth,
                      paint.erasing};
        CompositeDab(surface, paint, dab);
        stroke.previousDabX = static_cast<std::int16_t>(std::lround(px));
        stroke.previousDabY = static_cast<std::int16_t>(std::lround(py));
    }

    stroke.previousX = x;
    stroke.previousY = y;
    stroke.currentX = x;
    stroke.currentY = y;
    stroke.lastAngle = static_cast<float>(shape.angle);
    stroke.lastScale = static_cast<float>(shape.scale);
    MarkDirty(paint, surface, image != nullptr, startX, startY, x, y, *mask);
}

}  // namespace

}  // namespace wib
