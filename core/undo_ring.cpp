// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/undo_ring.h"

#include <algorithm>
#include <limits>
#include <new>

#include "core/host/prompter.h"
#include "pixel/blit.h"

namespace wib {

void SlotArray::allocate(std::size_t slotBytes, std::size_t slots) {
    release();
    const std::size_t total = slotBytes * slots;
    data_.reset(new std::uint8_t[total]);
    // Touch every page now so that no save pays a page fault later.
    BlockFill(data_.get(), total, 0);
    slotBytes_ = slotBytes;
    slots_ = slots;
}

void SlotArray::release() {
    data_.reset();
    slotBytes_ = 0;
    slots_ = 0;
}

void RunUndoCopyWorker(const UndoCopyJob& job) {
    if (job.workerNumber != 0 && job.workerNumber != 1) {
        return;
    }
    const int first = job.workerNumber * 2;
    for (int plane = first; plane < first + 2; ++plane) {
        BlockCopy(job.sources[plane], job.destinations[plane], job.planeBytes);
    }
}

int UndoRing::SlotCountValue(long long memoryMB, int ubX, int ubY) {
    const long long bytes = std::max(memoryMB, 0LL) << 20;
    const long long area = static_cast<long long>(ubX) * ubY;
    long long value = area == 0 ? 1 : bytes / (area * 4);
    value = std::max(value, 2LL);
    return static_cast<int>(std::min<long long>(value, std::numeric_limits<std::int16_t>::max()));
}

int UndoRing::allocate(long long memoryMB, int ubX, int ubY, std::uint64_t availableBytes,
                       Prompter& prompter) {
    const int value = SlotCountValue(memoryMB, ubX, ubY);
    const std::size_t planeBytes =
        static_cast<std::size_t>(ubX + 1) * static_cast<std::size_t>(ubY + 1);
    const std::size_t slots = static_cast<std::size_t>(value) + 1;

    for (SlotArray* array : {&UndoPlaneR, &UndoPlaneG, &UndoPlaneB, &UndoPlaneA, &SecondHeight,
                             &SecondR, &SecondG, &SecondB, &SecondA}) {
        array->release();
    }
    SecondRingAllocated = false;
    allocated_ = false;
    UndoIndex = 0;
    SecondUndoIndex = 0;
    UndoMaxIndex = 0;
    UndoFreshFlag = 0;
    RedoFlag = false;
    UndoSteps = 0;
    RedoSteps = 0;
    ShowingSlot = false;
    SlotStates.assign(slots, UndoSlotState{});
    LayerStates.assign(slots, nullptr);

    try {
        if (static_cast<double>(planeBytes) * 4.0 * static_cast<double>(slots) >
            static_cast<double>(availableBytes)) {
            throw std::bad_alloc();
        }
        UndoPlaneR.allocate(planeBytes, slots);
        UndoPlaneG.allocate(planeBytes, slots);
        UndoPlaneB.allocate(planeBytes, slots);
        UndoPlaneA.allocate(planeBytes, slots);
    } catch (const std::bad_alloc&) {
        for (SlotArray* array : {&UndoPlaneR, &UndoPlaneG, &UndoPlaneB, &UndoPlaneA}) {
            array->release();
        }
        prompter.message(kUndoAllocationFailed);
        return -1;
    }
    allocated_ = true;
    UndoMaxIndex = static_cast<std::int16_t>(value);
    return value;
}

}  // namespace wib
