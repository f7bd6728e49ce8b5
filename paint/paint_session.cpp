// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paint_session.h"

#include <algorithm>

#include "core/layer_edit.h"
#include "core/workspace.h"
#include "paint/brush_settings_file.h"
#include "paint/stroke_engine.h"
#include "paint/symmetry.h"

namespace wib {

namespace {

constexpr int kPaperSize = 256;
constexpr std::uint32_t kPaperSeed = 0x9A9E12;

// The canvas's stroke bracket: the undo step at the press, no busy pointer,
// and each segment redraws its own area as it goes.
constexpr EditOptions kCanvasStroke{.saveUndo = true, .busyPointer = false, .redraw = false};

constexpr const char* kSelectFirst = "Select part of the image to make a brush from it.";

// The part of `colours` inside `box` as a brush image, `alpha` giving its shape.
BrushImage CutBrush(const std::array<const Plane*, 3>& colours, const Plane& alpha,
                    const AlphaBounds& box) {
    const int width = box.right - box.left + 1;
    const int height = box.bottom - box.top + 1;
    Plane r(width - 1, height - 1), g(width - 1, height - 1), b(width - 1, height - 1);
    Plane a(width - 1, height - 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            r.at(x, y) = colours[0]->at(box.left + x, box.top + y);
            g.at(x, y) = colours[1]->at(box.left + x, box.top + y);
            b.at(x, y) = colours[2]->at(box.left + x, box.top + y);
            a.at(x, y) = alpha.at(box.left + x, box.top + y);
        }
    }
    BrushImage brush;
    brush.assign(std::move(r), std::move(g), std::move(b), std::move(a));
    return brush;
}

}  // namespace

PaintSession::PaintSession(Workspace& workspace, std::filesystem::path tempDir)
    : workspace_(workspace), tempDir_(std::move(tempDir)) {
    paperSource_ = MakePaper(paperKind_, kPaperSize, kPaperSeed);
    RebuildBuiltinTip(state_);
    state_.paper = PreparePaper(paperSource_, state_.options);
}

void PaintSession::optionsChanged() {
    RebuildBuiltinTip(state_);
    state_.paper = PreparePaper(paperSource_, state_.options);
    workspace_.events.paintOptionsChanged.notify();
}

std::string PaintSession::writeBrushSettings() {
    std::string error;
    const auto path = WriteBrushSettingsFile(tempDir_, PackBrushSettings(state_.options), error);
    if (!path) {
        workspace_.host.prompter.message("The brush settings could not be written to " +
                                         (tempDir_ / kBrushSettingsFileName).string() + ": " +
                                         error);
        return {};
    }
    return path->string();
}

bool PaintSession::readBrushSettings(const std::string& path) {
    std::string error;
    const auto record = ReadBrushSettingsFile(path, error);
    if (!record) {
        workspace_.host.prompter.message(error);
        return false;
    }
    UnpackBrushSettings(*record, state_.options);
    optionsChanged();
    return true;
}

bool PaintSession::setBrushType(int type) {
    if (type < 0 || type > 2) {
        return false;
    }
    state_.brushType = static_cast<BrushType>(type);
    workspace_.events.paintOptionsChanged.notify();
    return true;
}

void PaintSession::chooseBuiltinBrush(BuiltinBrush brush) {
    state_.options.builtinBrush = static_cast<std::int32_t>(brush);
    setImageBrushActive(false);
    optionsChanged();
}

bool PaintSession::replaceBuiltinBrush(int slot) {
    const Plane& mask = workspace_.brush.mask();
    if (slot < 0 || slot >= kBuiltinBrushCount || mask.empty()) {
        return false;
    }
    state_.replacedTips[static_cast<std::size_t>(slot)] = TipFromMask(mask);
    optionsChanged();
    return true;
}

void PaintSession::choosePaper(PaperKind kind) {
    paperKind_ = kind;
    paperSource_ = MakePaper(kind, kPaperSize, kPaperSeed);
    optionsChanged();
}

void PaintSession::setPaperSource(Plane grain) {
    paperSource_ = std::move(grain);
    optionsChanged();
}

bool PaintSession::makeBrushFromSelection() {
    Document& doc = workspace_.document;
    const AlphaBounds box = SelectionBounds(doc);
    if (box.empty()) {
        workspace_.host.prompter.message(kSelectFirst);
        return false;
    }
    workspace_.brush = CutBrush({&doc.RBuffer, &doc.GBuffer, &doc.BBuffer}, doc.ABuffer, box);
    workspace_.brush.setActive(true);
    workspace_.events.paintOptionsChanged.notify();
    return true;
}

bool PaintSession::makeAnimatedBrush(int count, const std::function<FrameColours(int)>& frame) {
    if (count <= 0) {
        workspace_.host.prompter.message("There are no animation frames to make a brush from.");
        return false;
    }
    const Document& doc = workspace_.document;
    const AlphaBounds box = SelectionBounds(doc);
    if (box.empty()) {
        workspace_.host.prompter.message(kSelectFirst);
        return false;
    }
    std::vector<BrushImage> frames;
    frames.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const FrameColours colours = frame(i);
        frames.push_back(CutBrush({&colours[0], &colours[1], &colours[2]}, doc.ABuffer, box));
    }
    state_.animatedBrush.assign(std::move(frames));
    state_.animatedBrush.setActive(true);
    workspace_.events.paintOptionsChanged.notify();
    return true;
}

void PaintSession::stopAnimatedBrush() {
    state_.animatedBrush.setActive(false);
    workspace_.events.paintOptionsChanged.notify();
}

void PaintSession::setImageBrushActive(bool active) {
    state_.animatedBrush.setActive(false);
    workspace_.brush.setActive(active);
}

void PaintSession::step(int button, float x, float y) {
    std::int16_t b = static_cast<std::int16_t>(button), shift = 0;
    BrushStep(workspace_, state_, b, shift, x, y);
}

void PaintSession::startCurve(float x, float y) {
    const float zoom = workspace_.view.scale();
    state_.curve.assign(1, {x / zoom, y / zoom});
}

void PaintSession::extendCurve(float x, float y) {
    const float zoom = workspace_.view.scale();
    state_.curve.push_back({x / zoom, y / zoom});
}

bool PaintSession::layerLocked() const {
    return LayerAt(workspace_, CurrentLayer(workspace_)).lockPixels;
}

void PaintSession::brushDown(float x, float y) {
    if (layerLocked()) {
        workspace_.host.log.line(kLayerLockedMessage);
    }
    workspace_.events.strokeStarting.notify();
    startCurve(x, y);
    step(0, x, y);
}
void PaintSession::brushMove(float x, float y) {
    if (layerLocked()) {
        return;
    }
    const ImageEdit edit(workspace_, kPluginEdit);
    extendCurve(x, y);
    step(1, x, y);
}
void PaintSession::brushUp(float x, float y) {
    step(0, x, y);
}

void PaintSession::setCloneSource(float x, float y) {
    const float zoom = workspace_.view.scale();
    const int sx = static_cast<int>(x / zoom);
    const int sy = static_cast<int>(y / zoom);
    state_.cloneSource = std::array<int, 2>{sx, sy};
    state_.cloneSourcePending = true;
    state_.patternOffsetX = static_cast<std::int16_t>(-sx);
    state_.patternOffsetY = static_cast<std::int16_t>(-sy);
}

void PaintSession::penPress(int button, float x, float y, double pressure, bool tablet) {
    stroke_.reset();
    if (layerLocked()) {
        workspace_.host.log.line(kLayerLockedMessage);
        return;
    }
    workspace_.events.strokeStarting.notify();
    state_.pressure = pressure;
    state_.tabletActive = tablet;
    if (state_.cloneSource && (state_.cloneSourcePending || !state_.options.cloneAligned)) {
        const float zoom = workspace_.view.scale();
        state_.cloneOffsetX = static_cast<int>(x / zoom) - (*state_.cloneSource)[0];
        state_.cloneOffsetY = static_cast<int>(y / zoom) - (*state_.cloneSource)[1];
        state_.cloneSourcePending = false;
    }
    stroke_.emplace(workspace_, kCanvasStroke);
    startCurve(x, y);
    DispatchStroke(workspace_, state_, 0, 0, x, y);
    DispatchStroke(workspace_, state_, static_cast<std::int16_t>(button), 0, x, y);
    // The first dab has changed the image: the title shows it now, not at
    // the release.
    SetModified(workspace_, true);
}

void PaintSession::penDrag(int button, float x, float y, double pressure, bool tablet) {
    if (!stroke_) {
        return;
    }
    state_.pressure = pressure;
    state_.tabletActive = tablet;
    extendCurve(x, y);
    DispatchStroke(workspace_, state_, static_cast<std::int16_t>(button), 0, x, y);
}

void PaintSession::penRelease(float x, float y) {
    if (!stroke_) {
        return;
    }
    DispatchStroke(workspace_, state_, 0, 0, x, y);
    stroke_.reset();
}

void PaintSession::setPrimaryColour(PackedColour colour) {
    workspace_.colours.primary = colour;
    workspace_.events.paintOptionsChanged.notify();
}

void PaintSession::setSecondaryColour(PackedColour colour) {
    workspace_.colours.secondary = colour;
    workspace_.events.paintOptionsChanged.notify();
}

void PaintSession::pickColour(int x, int y) {
    const Document& doc = workspace_.document;
    if (x < 0 || y < 0 || x >= doc.width || y >= doc.height) {
        return;
    }
    setPrimaryColour({doc.RBuffer.at(x, y), doc.GBuffer.at(x, y), doc.BBuffer.at(x, y)});
}

}  // namespace wib
