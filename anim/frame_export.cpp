// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_export.h"

#include <new>

#include "anim/frame_store.h"
#include "anim/stack_memory.h"
#include "core/document_build.h"
#include "core/image_edit.h"
#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

ColourPlanes FrameImageForExport(FrameStore& store, int index) {
    const Workspace& workspace = store.workspace();
    if (!IsFlatPicture(workspace)) {
        // A layered frame is exported as shown, laid over white where it is
        // not opaque.
        LayerPixels frame = CompositeOfFrame(workspace, index);
        for (std::size_t i = 0; i < frame.r.count(); ++i) {
            const int a = frame.a.data()[i];
            for (Plane* plane : {&frame.r, &frame.g, &frame.b}) {
                std::uint8_t& v = plane->data()[i];
                v = static_cast<std::uint8_t>((v * a + 255 * (255 - a) + 127) / 255);
            }
        }
        return {std::move(frame.r), std::move(frame.g), std::move(frame.b)};
    }
    if (index == store.CurrentFrame()) {
        const Document& doc = store.workspace().document;
        return {doc.RBuffer, doc.GBuffer, doc.BBuffer};
    }
    return {store.framePlane(FrameColour::Red, index), store.framePlane(FrameColour::Green, index),
            store.framePlane(FrameColour::Blue, index)};
}

int FrameExposure(const FrameStore& store, int index) {
    return store.exposure(index);
}

bool ReplaceAnimation(FrameStore& store, int width, int height, std::vector<ColourPlanes>&& frames,
                      double rate) {
    Workspace& workspace = store.workspace();
    const int count = static_cast<int>(frames.size());
    // The decoded frames are given up as the stack takes them, so the memory
    // the stack may take includes theirs.
    std::uint64_t decoded = 0;
    for (const ColourPlanes& frame : frames) {
        decoded += frame.r.byteCount() + frame.g.byteCount() + frame.b.byteCount();
    }
    std::uint64_t held = 0;
    for (const FrameArray* array : {&store.AnimR(), &store.AnimG(), &store.AnimB()}) {
        held += array->byteCount();
    }
    const StackMemory memory{StackBytes(count, width, height),
                             workspace.host.system.availableMemoryBytes() + held + decoded};
    if (count < 1 || !memory.fits()) {
        workspace.host.prompter.message(count < 1 ? "There are no frames to import."
                                                  : memory.refusal());
        return false;
    }
    store.FreeAnimation();
    Document& doc = workspace.document;
    if (doc.width != width || doc.height != height) {
        try {
            BuildDocumentPlanes(workspace, width, height);
        } catch (const std::bad_alloc&) {
            workspace.host.prompter.message(memory.refusal());
            return false;
        }
        workspace.view.reset();
    }
    doc.ABuffer.fill(255);
    ResetLayers(workspace);
    if (!store.CreateAnimation(count, 0, false)) {
        return false;
    }
    for (int index = 0; index < count; ++index) {
        ColourPlanes frame = std::move(frames[static_cast<std::size_t>(index)]);
        store.setFramePlane(FrameColour::Red, frame.r, index);
        store.setFramePlane(FrameColour::Green, frame.g, index);
        store.setFramePlane(FrameColour::Blue, frame.b, index);
    }
    frames.clear();
    store.LoadCurrentFrame();
    store.rateField().setRate(rate);
    doc.FileName.clear();
    workspace.events.fileNameChanged.notify();
    SetModified(workspace, true);
    SaveUndo(workspace);
    store.showChanges();
    workspace.host.view.refresh();
    return true;
}

}  // namespace wib
