// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work_snapshot.h"

#include <array>
#include <string>

#include "anim/frame_store.h"
#include "core/document_build.h"
#include "core/image_edit.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "fileio/image_files.h"

namespace wib {

namespace {

constexpr std::array<FrameColour, 3> kFrameColours{FrameColour::Red, FrameColour::Green,
                                                   FrameColour::Blue};
constexpr std::array<const char*, 3> kFrameColourNames{"R", "G", "B"};

std::string FramePlaneName(int frame, std::size_t colour) {
    return "frame." + std::to_string(frame) + "." + kFrameColourNames[colour];
}

int Number(const std::string& text, int fallback) {
    try {
        return text.empty() ? fallback : std::stoi(text);
    } catch (const std::exception&) {
        return fallback;
    }
}

// The document's main, alpha and swap planes, by their snapshot names.
std::array<std::pair<const char*, Plane Document::*>, 7> DocumentPlanes() {
    return {{{"R", &Document::RBuffer},
             {"G", &Document::GBuffer},
             {"B", &Document::BBuffer},
             {"A", &Document::ABuffer},
             {"SwapR", &Document::SwapR},
             {"SwapG", &Document::SwapG},
             {"SwapB", &Document::SwapB}}};
}

void RestoreFrames(FrameStore& frames, const RecoverySnapshot& snapshot) {
    const int count = Number(snapshot.text("frames"), 0);
    if (count < 1 || !frames.CreateAnimation(count, 0)) {
        return;
    }
    for (int frame = 0; frame < count; ++frame) {
        for (std::size_t colour = 0; colour < kFrameColours.size(); ++colour) {
            if (const Plane* plane = snapshot.plane(FramePlaneName(frame, colour))) {
                frames.setFramePlane(kFrameColours[colour], *plane, frame);
            }
        }
    }
    // The image shows the current frame; frame 0 goes in first so that the
    // go-to stores back what frame 0 holds.
    frames.LoadCurrentFrame();
    frames.GotoFrame(Number(snapshot.text("current_frame"), 0));
    frames.setName(snapshot.text("animation_name"));
    const std::string rate = snapshot.text("frame_rate");
    if (!rate.empty()) {
        frames.rateField().setText(rate);
    }
}

}  // namespace

RecoverySnapshot CaptureWork(const WorkSources& sources) {
    const Workspace& workspace = sources.workspace;
    const Document& doc = workspace.document;
    RecoverySnapshot snapshot;
    for (const auto& [name, member] : DocumentPlanes()) {
        snapshot.planes.emplace_back(name, doc.*member);
    }
    snapshot.texts["file"] = doc.FileName;
    snapshot.texts["alpha_bits"] = std::to_string(doc.AlphaBitsFlag);
    const SaveSettings& settings = sources.files.saveSettings();
    snapshot.texts["settings_file"] = sources.files.settingsFile();
    snapshot.texts["save_type"] = settings.type;
    snapshot.texts["targa_format"] = std::to_string(settings.targaFormat);
    snapshot.texts["quality"] = std::to_string(settings.quality);

    const BrushImage& brush = workspace.brush;
    if (!brush.empty()) {
        snapshot.planes.emplace_back("BrushR", brush.R);
        snapshot.planes.emplace_back("BrushG", brush.G);
        snapshot.planes.emplace_back("BrushB", brush.B);
        snapshot.planes.emplace_back("BrushA", brush.A());
        snapshot.texts["brush_active"] = brush.active() ? "1" : "0";
    }

    const FrameStore& frames = sources.frames;
    snapshot.texts["frames"] = std::to_string(frames.FrameCount());
    snapshot.texts["current_frame"] = std::to_string(frames.CurrentFrame());
    snapshot.texts["frame_rate"] = frames.rateField().text();
    snapshot.texts["animation_name"] = frames.name();
    for (int frame = 0; frame < frames.FrameCount(); ++frame) {
        for (std::size_t colour = 0; colour < kFrameColours.size(); ++colour) {
            // The current frame's pixels are in the image, not yet in the stack.
            Plane plane = frame == frames.CurrentFrame()
                              ? doc.*(DocumentPlanes()[colour].second)
                              : frames.framePlane(kFrameColours[colour], frame);
            snapshot.planes.emplace_back(FramePlaneName(frame, colour), std::move(plane));
        }
    }
    return snapshot;
}

bool RestoreWork(const WorkSources& sources, const RecoverySnapshot& snapshot) {
    Workspace& workspace = sources.workspace;
    const Plane* red = snapshot.plane("R");
    if (red == nullptr || red->ubX() < 1 || red->ubY() < 1) {
        return false;
    }
    for (const auto& [name, member] : DocumentPlanes()) {
        const Plane* plane = snapshot.plane(name);
        if (plane == nullptr || !plane->sameShape(*red)) {
            return false;
        }
    }
    BuildDocumentPlanes(workspace, red->ubX(), red->ubY());
    Document& doc = workspace.document;
    for (const auto& [name, member] : DocumentPlanes()) {
        doc.*member = *snapshot.plane(name);
    }
    doc.AlphaBitsFlag = static_cast<std::uint8_t>(Number(snapshot.text("alpha_bits"), 0));
    doc.FileName = snapshot.text("file");
    sources.files.restoreSettings(
        snapshot.text("settings_file"),
        {snapshot.text("save_type"), Number(snapshot.text("targa_format"), 2),
         Number(snapshot.text("quality"), 90)});

    const Plane* brushR = snapshot.plane("BrushR");
    const Plane* brushG = snapshot.plane("BrushG");
    const Plane* brushB = snapshot.plane("BrushB");
    const Plane* brushA = snapshot.plane("BrushA");
    if (brushR && brushG && brushB && brushA) {
        workspace.brush.assign(Plane(*brushR), Plane(*brushG), Plane(*brushB), Plane(*brushA));
        workspace.brush.setActive(snapshot.text("brush_active") == "1");
        workspace.events.paintOptionsChanged.notify();
    }
    RestoreFrames(sources.frames, snapshot);

    workspace.events.fileNameChanged.notify();
    SaveUndo(workspace);
    SetModified(workspace, true);
    workspace.host.view.completeRefresh();
    return true;
}

}  // namespace wib
