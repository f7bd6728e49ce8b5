#include "paint/paint_session.h"

#include <algorithm>

#include "core/buffer_access.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "paint/brush_settings_file.h"
#include "paint/stroke_engine.h"
#include "paint/symmetry.h"

namespace wib {

namespace {

constexpr int kPaperSize = 256;
constexpr std::uint32_t kPaperSeed = 0x9A9E12;

std::int32_t Pack(const std::array<std::uint8_t, 3>& colour) {
    return colour[0] + 256 * colour[1] + 65536 * colour[2];
}

bool Unpack(std::int64_t packed, std::array<std::uint8_t, 3>& colour) {
    if (packed < 0 || packed > 0xFFFFFF) {
        return false;
    }
    colour = {static_cast<std::uint8_t>(packed & 0xFF),
              static_cast<std::uint8_t>((packed >> 8) & 0xFF),
              static_cast<std::uint8_t>((packed >> 16) & 0xFF)};
    return true;
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
    if (onOptionsChanged) {
        onOptionsChanged();
    }
}

std::string PaintSession::Wib_GetBrushSettings() {
    const auto path = WriteBrushSettingsFile(tempDir_, PackBrushSettings(state_.options));
    if (!path) {
        workspace_.host.prompter.message("The brush settings could not be written to " +
                                         (tempDir_ / kBrushSettingsFileName).string() + ".");
        return {};
    }
    return path->string();
}

bool PaintSession::Wib_SetBrushSettings(const std::string& path) {
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

bool PaintSession::Wib_SetBrushType(int type) {
    if (type < 0 || type > 2) {
        return false;
    }
    state_.brushType = static_cast<BrushType>(type);
    if (onOptionsChanged) {
        onOptionsChanged();
    }
    return true;
}

void PaintSession::chooseBuiltinBrush(BuiltinBrush brush) {
    state_.options.builtinBrush = static_cast<std::int32_t>(brush);
    setImageBrushActive(false);
    optionsChanged();
}

bool PaintSession::replaceBuiltinBrush(int slot) {
    const Plane& mask = workspace_.document.BrushMask;
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

bool PaintSession::makeBrushFromSelection() {
    Document& doc = workspace_.document;
    const AlphaBounds box = ComputeAlphaBounds(doc.ABuffer, doc.width, doc.height);
    if (box.empty()) {
        workspace_.host.prompter.message("Select part of the image to make a brush from it.");
        return false;
    }
    const int width = box.right - box.left + 1;
    const int height = box.bottom - box.top + 1;
    Plane r(width - 1, height - 1), g(width - 1, height - 1), b(width - 1, height - 1);
    Plane a(width - 1, height - 1), mask(width - 1, height - 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            r.at(x, y) = doc.RBuffer.at(box.left + x, box.top + y);
            g.at(x, y) = doc.GBuffer.at(box.left + x, box.top + y);
            b.at(x, y) = doc.BBuffer.at(box.left + x, box.top + y);
            a.at(x, y) = doc.ABuffer.at(box.left + x, box.top + y);
            mask.at(x, y) = static_cast<std::uint8_t>(255 - a.at(x, y));
        }
    }
    doc.BrushR = std::move(r);
    doc.BrushG = std::move(g);
    doc.BrushB = std::move(b);
    doc.BrushA = std::move(a);
    doc.BrushMask = std::move(mask);
    setImageBrushActive(true);
    if (onOptionsChanged) {
        onOptionsChanged();
    }
    return true;
}

void PaintSession::setImageBrushActive(bool active) {
    const bool available = !workspace_.document.BrushMask.empty();
    state_.imageBrush = active && available;
    workspace_.document.CustomBrushActive = state_.imageBrush;
}

void PaintSession::step(int button, float x, float y) {
    std::int16_t b = static_cast<std::int16_t>(button), shift = 0;
    BrushStep(workspace_, state_, b, shift, x, y);
}

void PaintSession::Wib_BrushDown(float x, float y) {
    step(0, x, y);
}
void PaintSession::Wib_BrushMove(float x, float y) {
    step(1, x, y);
}
void PaintSession::Wib_BrushUp(float x, float y) {
    step(0, x, y);
}

void PaintSession::setCloneSource(float x, float y) {
    const float zoom = workspace_.document.Zoom / 100.0f;
    const int sx = static_cast<int>(x / zoom);
    const int sy = static_cast<int>(y / zoom);
    state_.cloneSource = std::array<int, 2>{sx, sy};
    state_.cloneSourcePending = true;
    state_.patternOffsetX = static_cast<std::int16_t>(-sx);
    state_.patternOffsetY = static_cast<std::int16_t>(-sy);
}

void PaintSession::penPress(int button, float x, float y, double pressure, bool tablet) {
    state_.pressure = pressure;
    state_.tabletActive = tablet;
    if (state_.cloneSource && (state_.cloneSourcePending || !state_.options.cloneAligned)) {
        const float zoom = workspace_.document.Zoom / 100.0f;
        state_.cloneOffsetX = static_cast<int>(x / zoom) - (*state_.cloneSource)[0];
        state_.cloneOffsetY = static_cast<int>(y / zoom) - (*state_.cloneSource)[1];
        state_.cloneSourcePending = false;
    }
    Wib_SaveUndo(workspace_);
    BeginStroke(state_);
    DispatchStroke(workspace_, state_, 0, 0, x, y);
    DispatchStroke(workspace_, state_, static_cast<std::int16_t>(button), 0, x, y);
}

void PaintSession::penDrag(int button, float x, float y, double pressure, bool tablet) {
    state_.pressure = pressure;
    state_.tabletActive = tablet;
    DispatchStroke(workspace_, state_, static_cast<std::int16_t>(button), 0, x, y);
}

void PaintSession::penRelease(float x, float y) {
    DispatchStroke(workspace_, state_, 0, 0, x, y);
}

std::int32_t PaintSession::Wib_GetPrimaryColor() const {
    return Pack(state_.primary);
}
std::int32_t PaintSession::Wib_GetSecondaryColor() const {
    return Pack(state_.secondary);
}
bool PaintSession::Wib_SetPrimaryColor(std::int64_t packed) {
    return Unpack(packed, state_.primary);
}
bool PaintSession::Wib_SetSecondaryColor(std::int64_t packed) {
    return Unpack(packed, state_.secondary);
}

void PaintSession::pickColour(int x, int y) {
    const Document& doc = workspace_.document;
    if (x < 0 || y < 0 || x >= doc.width || y >= doc.height) {
        return;
    }
    state_.primary = {Wib_GetR(doc, x, y), Wib_GetG(doc, x, y), Wib_GetB(doc, x, y)};
    if (onOptionsChanged) {
        onOptionsChanged();
    }
}

}  // namespace wib
