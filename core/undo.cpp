// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/undo.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <thread>

#include "core/image_edit.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/blit.h"

namespace wib {

namespace {

constexpr long long kDefaultUndoMemoryMB = 256;
constexpr float kEmptyHeight = -20000.0f;

std::int16_t StepDown(std::int16_t index, std::int16_t maxIndex) {
    return index <= 0 ? maxIndex : static_cast<std::int16_t>(index - 1);
}

std::int16_t StepUp(std::int16_t index, std::int16_t maxIndex) {
    return index >= maxIndex ? 0 : static_cast<std::int16_t>(index + 1);
}

bool RingFits(const Workspace& workspace) {
    const UndoRing& ring = workspace.undo;
    return ring.allocated() &&
           ring.UndoPlaneR.slotBytes() == workspace.document.RBuffer.byteCount() &&
           !workspace.document.RBuffer.empty();
}

// The four main-ring copies of one slot, on two workers joined before returning.
void CopyImageToSlot(Workspace& workspace, int slot) {
    Document& doc = workspace.document;
    UndoRing& ring = workspace.undo;
    UndoCopyJob job{
        {doc.RBuffer.data(), doc.GBuffer.data(), doc.BBuffer.data(), doc.ABuffer.data()},
        {ring.UndoPlaneR.slot(slot), ring.UndoPlaneG.slot(slot), ring.UndoPlaneB.slot(slot),
         ring.UndoPlaneA.slot(slot)},
        0,
        2,
        doc.width,
        doc.height,
        doc.RBuffer.byteCount()};
    UndoCopyJob second = job;
    second.workerNumber = 1;
    {
        std::jthread first(RunUndoCopyWorker, job);
        std::jthread other(RunUndoCopyWorker, second);
    }
    ring.SlotStates[slot] = UndoSlotState{doc.AlphaBitsFlag, doc.modified};
    SaveLayerState(workspace, slot);
    workspace.frames().saveTimeline(slot);
}

void CopySlotToImage(Workspace& workspace, int slot) {
    Document& doc = workspace.document;
    UndoRing& ring = workspace.undo;
    // The frames first: the layer state restored next has a cell per frame
    // of the order it was saved with.
    workspace.frames().restoreTimeline(slot);
    RestoreLayerState(workspace, slot);
    const std::size_t bytes = doc.RBuffer.byteCount();
    BlockCopy(ring.UndoPlaneR.slot(slot), doc.RBuffer.data(), bytes);
    BlockCopy(ring.UndoPlaneG.slot(slot), doc.GBuffer.data(), bytes);
    BlockCopy(ring.UndoPlaneB.slot(slot), doc.BBuffer.data(), bytes);
    BlockCopy(ring.UndoPlaneA.slot(slot), doc.ABuffer.data(), bytes);
    doc.AlphaBitsFlag = ring.SlotStates[slot].alphaBits;
    SetModified(workspace, ring.SlotStates[slot].modified);
}

std::array<SlotArray*, 4> SecondBytePlanes(UndoRing& ring) {
    return {&ring.SecondR, &ring.SecondG, &ring.SecondB, &ring.SecondA};
}

std::array<Plane*, 4> DepthBytePlanes(DepthLayer& depth) {
    return {&depth.R, &depth.G, &depth.B, &depth.A};
}

bool SecondRingInUse(const Workspace& workspace) {
    return workspace.document.Depth.has_value() && workspace.undo.SecondRingAllocated;
}

// The second ring is made on first need, with the main ring's slot range.
void EnsureSecondRing(Workspace& workspace) {
    UndoRing& ring = workspace.undo;
    if (ring.SecondRingAllocated || !workspace.document.Depth) {
        return;
    }
    const DepthLayer& depth = *workspace.document.Depth;
    const std::size_t slots = static_cast<std::size_t>(ring.UndoMaxIndex) + 1;
    const double total = static_cast<double>(depth.Height.byteCount() + 4 * depth.R.byteCount()) *
                         static_cast<double>(slots);
    try {
        if (total > static_cast<double>(workspace.host.system.availableMemoryBytes())) {
            throw std::bad_alloc();
        }
        ring.SecondHeight.allocate(depth.Height.byteCount(), slots);
        for (SlotArray* array : SecondBytePlanes(ring)) {
            array->allocate(depth.R.byteCount(), slots);
        }
    } catch (const std::bad_alloc&) {
        ring.SecondHeight.release();
        for (SlotArray* array : SecondBytePlanes(ring)) {
            array->release();
        }
        workspace.host.prompter.message(kSecondRingAllocationFailed);
        return;
    }
    ring.SecondUndoIndex = 0;
    ring.SecondRingAllocated = true;
}

void CopyDepthToSlot(Workspace& workspace, int slot) {
    UndoRing& ring = workspace.undo;
    DepthLayer& depth = *workspace.document.Depth;
    BlockCopy(reinterpret_cast<const std::uint8_t*>(depth.Height.data()),
              ring.SecondHeight.slot(slot), depth.Height.byteCount());
    const auto planes = DepthBytePlanes(depth);
    const auto slots = SecondBytePlanes(ring);
    for (std::size_t i = 0; i < planes.size(); ++i) {
        BlockCopy(planes[i]->data(), slots[i]->slot(slot), planes[i]->byteCount());
    }
}

void CopySlotToDepth(Workspace& workspace, int slot) {
    UndoRing& ring = workspace.undo;
    DepthLayer& depth = *workspace.document.Depth;
    BlockCopy(ring.SecondHeight.slot(slot), reinterpret_cast<std::uint8_t*>(depth.Height.data()),
              depth.Height.byteCount());
    const auto planes = DepthBytePlanes(depth);
    const auto slots = SecondBytePlanes(ring);
    for (std::size_t i = 0; i < planes.size(); ++i) {
        BlockCopy(slots[i]->slot(slot), planes[i]->data(), planes[i]->byteCount());
    }
}

bool SlotMatchesImage(Workspace& workspace, int slot) {
    Document& doc = workspace.document;
    UndoRing& ring = workspace.undo;
    const std::size_t bytes = doc.RBuffer.byteCount();
    return std::memcmp(ring.UndoPlaneR.slot(slot), doc.RBuffer.data(), bytes) == 0 &&
           std::memcmp(ring.UndoPlaneG.slot(slot), doc.GBuffer.data(), bytes) == 0 &&
           std::memcmp(ring.UndoPlaneB.slot(slot), doc.BBuffer.data(), bytes) == 0 &&
           std::memcmp(ring.UndoPlaneA.slot(slot), doc.ABuffer.data(), bytes) == 0 &&
           LayerStateMatches(workspace, slot) && workspace.frames().timelineMatches(slot);
}

// Moves both rings' indices the same way.
template <typename Step>
void MoveIndices(UndoRing& ring, Step step) {
    ring.UndoIndex = step(ring.UndoIndex, ring.UndoMaxIndex);
    if (ring.SecondRingAllocated) {
        ring.SecondUndoIndex = step(ring.SecondUndoIndex, ring.UndoMaxIndex);
    }
}

void CopyCurrentSlotsToImage(Workspace& workspace) {
    CopySlotToImage(workspace, workspace.undo.UndoIndex);
    if (SecondRingInUse(workspace)) {
        CopySlotToDepth(workspace, workspace.undo.SecondUndoIndex);
    }
}

}  // namespace

void AllocateUndo(Workspace& workspace) {
    const long long memoryMB = std::clamp<long long>(
        workspace.host.preferences.integer("Settings", "mem_MaxUndo", kDefaultUndoMemoryMB), 0,
        32767);
    workspace.undo.allocate(memoryMB, workspace.document.width, workspace.document.height,
                            workspace.host.system.availableMemoryBytes(), workspace.host.prompter);
}

void SaveUndo(Workspace& workspace) {
    UndoRing& ring = workspace.undo;
    if (ring.UndoDisabledFlag || !RingFits(workspace)) {
        return;
    }
    if (workspace.document.Depth) {
        EnsureSecondRing(workspace);
        if (ring.SecondRingAllocated) {
            ring.SecondUndoIndex = StepDown(ring.SecondUndoIndex, ring.UndoMaxIndex);
            CopyDepthToSlot(workspace, ring.SecondUndoIndex);
        }
    }
    ring.UndoIndex = StepDown(ring.UndoIndex, ring.UndoMaxIndex);
    CopyImageToSlot(workspace, ring.UndoIndex);
    ring.UndoFreshFlag = 1;
    ring.RedoFlag = false;
    // After an undo or redo the slot that was showing lies above the new one
    // and becomes a step of its own. One slot stays free for the image kept
    // at the first undo.
    const int added = ring.ShowingSlot ? 2 : 1;
    ring.UndoSteps = std::min<int>(ring.UndoSteps + added, ring.UndoMaxIndex);
    ring.RedoSteps = 0;
    ring.ShowingSlot = false;
}

void RestoreUndo(Workspace& workspace) {
    UndoRing& ring = workspace.undo;
    if (!RingFits(workspace)) {
        return;
    }
    if (ring.UndoFreshFlag == 1) {
        workspace.frames().showSavedFrame(ring.UndoIndex);
        const std::int16_t remembered = ring.UndoIndex;
        const std::int16_t secondRemembered = ring.SecondUndoIndex;
        MoveIndices(ring, StepDown);
        CopyImageToSlot(workspace, ring.UndoIndex);
        if (SecondRingInUse(workspace)) {
            CopyDepthToSlot(workspace, ring.SecondUndoIndex);
        }
        ring.UndoIndex = remembered;
        ring.SecondUndoIndex = secondRemembered;
        ring.UndoFreshFlag = 0;
        ring.RedoSteps = 0;
    }
    if (ring.RedoFlag) {
        MoveIndices(ring, StepUp);
    }
    CopyCurrentSlotsToImage(workspace);
    ring.UndoSteps = std::max(ring.UndoSteps - 1, 0);
    ring.RedoSteps = std::min<int>(ring.RedoSteps + 1, ring.UndoMaxIndex);
    ring.ShowingSlot = true;
    workspace.host.view.refresh();
}

bool CanUndo(const Workspace& workspace) {
    return RingFits(workspace) && workspace.undo.UndoSteps > 0;
}

bool CanRedo(const Workspace& workspace) {
    return RingFits(workspace) && workspace.undo.RedoSteps > 0;
}

// Slot UndoIndex holds the image shown after the last restore (or, right after
// a save, the image before the change). A later undo steps up to the older
// slot first, unless the restore itself does so because the last step was a redo.
//
// A save right after an undo stores the image that is already in the slot
// above, so the walk passes over slots identical to the image on screen:
// every Undo and Redo the user asks for visibly changes something.
bool EditUndo(Workspace& workspace) {
    if (!CanUndo(workspace)) {
        return false;
    }
    UndoRing& ring = workspace.undo;
    auto step = [&] {
        if (ring.UndoFreshFlag == 0) {
            // After a redo the restore itself steps up.
            if (!ring.RedoFlag) {
                MoveIndices(ring, StepUp);
            }
            auto next = [&] {
                return ring.RedoFlag ? StepUp(ring.UndoIndex, ring.UndoMaxIndex) : ring.UndoIndex;
            };
            while (ring.UndoSteps > 1 && SlotMatchesImage(workspace, next())) {
                MoveIndices(ring, StepUp);
                ring.UndoSteps -= 1;
                ring.RedoSteps += 1;
            }
        }
        RestoreUndo(workspace);
        ring.RedoFlag = false;
    };
    // A step saved after the last change (a canvas-size change saves one)
    // holds the image on screen: the first undo keeps it for redo and goes
    // on to the one before.
    const bool unchanged = ring.UndoFreshFlag == 1 && SlotMatchesImage(workspace, ring.UndoIndex);
    step();
    if (unchanged && CanUndo(workspace)) {
        step();
    }
    workspace.events.imageEdited.notify();
    return true;
}

bool EditRedo(Workspace& workspace) {
    if (!CanRedo(workspace)) {
        return false;
    }
    UndoRing& ring = workspace.undo;
    MoveIndices(ring, StepDown);
    while (ring.RedoSteps > 1 && SlotMatchesImage(workspace, ring.UndoIndex)) {
        MoveIndices(ring, StepDown);
        ring.RedoSteps -= 1;
        ring.UndoSteps += 1;
    }
    CopyCurrentSlotsToImage(workspace);
    ring.RedoFlag = true;
    ring.ShowingSlot = true;
    ring.RedoSteps -= 1;
    ring.UndoSteps += 1;
    workspace.host.view.refresh();
    workspace.events.imageEdited.notify();
    return true;
}

void EnableDepthLayer(Workspace& workspace) {
    Document& doc = workspace.document;
    if (doc.Depth) {
        return;
    }
    DepthLayer depth;
    depth.Height = FloatPlane(doc.width, doc.height, kEmptyHeight);
    for (Plane* plane : DepthBytePlanes(depth)) {
        *plane = Plane(doc.width, doc.height, 0);
    }
    doc.Depth = std::move(depth);
}

}  // namespace wib
