// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/layer_stack.h"

namespace wib {

class Prompter;
struct Document;

inline constexpr const char* kUndoAllocationFailed =
    "Can't allocate undo buffers.  Try increasing undo memory.";
inline constexpr const char* kSecondRingAllocationFailed =
    "Could not allocate all undos for this operation.";

// Slots of one plane layout in one contiguous block, slot i at i * slotBytes.
// Every page is written once when the block is made, so that saving into a
// slot later never pays a page fault.
class SlotArray {
  public:
    // Throws std::bad_alloc when the memory cannot be had.
    void allocate(std::size_t slotBytes, std::size_t slots);
    void release();
    std::uint8_t* slot(int index) {
        return data_.get() + static_cast<std::size_t>(index) * slotBytes_;
    }
    std::size_t slotBytes() const { return slotBytes_; }
    std::size_t slotCount() const { return slots_; }

  private:
    std::unique_ptr<std::uint8_t[]> data_;
    std::size_t slotBytes_ = 0;
    std::size_t slots_ = 0;
};

// The document state stored with each slot: AlphaBitsFlag and the modified
// state, so that undo brings back whether the selection was in force
// and whether the image differed from its file.
struct UndoSlotState {
    std::uint8_t alphaBits = 0;
    bool modified = false;
};

// What one save worker is given: the four source planes, the four slot blocks
// of the slot being written, its own number and the plane geometry. Worker 0
// copies red and green, worker 1 blue and alpha; any other number copies nothing.
struct UndoCopyJob {
    const std::uint8_t* sources[4];
    std::uint8_t* destinations[4];
    int workerNumber;
    int workerCount;
    int width;
    int height;
    std::size_t planeBytes;
};

void RunUndoCopyWorker(const UndoCopyJob& job);

// The undo ring: whole copies of the main and alpha planes in a fixed ring of
// slots, walked downward with wrap-around, newest at the lowest index.
class UndoRing {
  public:
    // Ring value for a budget in megabytes and planes of upper bounds (ubX, ubY):
    // budget bytes / (ubX * ubY * 4), at least 2, at most 32767 (the index is a
    // signed 16-bit value).
    static int SlotCountValue(long long memoryMB, int ubX, int ubY);

    // Sizes and allocates the ring for planes with upper bounds (ubX, ubY),
    // dropping all saved steps. On failure, including a ring larger than
    // `availableBytes`, tells the user kUndoAllocationFailed and leaves the ring
    // unallocated (saves and restores then do nothing). Returns UndoMaxIndex,
    // or -1 on failure.
    int allocate(long long memoryMB, int ubX, int ubY, std::uint64_t availableBytes,
                 Prompter& prompter);
    bool allocated() const { return allocated_; }

    std::int16_t UndoIndex = 0;
    std::int16_t UndoMaxIndex = 0;
    int UndoFreshFlag = 0;
    bool RedoFlag = false;
    bool UndoDisabledFlag = false;
    std::vector<UndoSlotState> SlotStates;
    // The layer list of each slot, as its main planes were saved with it.
    std::vector<std::shared_ptr<const LayerSnapshot>> LayerStates;
    SlotArray UndoPlaneR, UndoPlaneG, UndoPlaneB, UndoPlaneA;

    // The second ring, used while depth painting is on: the height plane and
    // the four wet-paint planes, with an index of its own moved like UndoIndex.
    bool SecondRingAllocated = false;
    std::int16_t SecondUndoIndex = 0;
    SlotArray SecondHeight, SecondR, SecondG, SecondB, SecondA;

    // How many steps the Undo and Redo commands can still take.
    int UndoSteps = 0;
    int RedoSteps = 0;
    // True while the image on screen is the one in slot UndoIndex (after an
    // undo or redo, until the next save).
    bool ShowingSlot = false;

  private:
    bool allocated_ = false;
};

}  // namespace wib
