// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <numeric>

#include "core/undo.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

TEST(UndoRingSize, FollowsTheBudgetRule) {
    EXPECT_EQ(UndoRing::SlotCountValue(64, 640, 480), 54);
    EXPECT_EQ(UndoRing::SlotCountValue(1, 640, 480), 2) << "too small for two copies";
    EXPECT_EQ(UndoRing::SlotCountValue(0, 640, 480), 2);
    EXPECT_EQ(UndoRing::SlotCountValue(64, 0, 480), 2) << "W * H = 0 gives 1, raised to 2";
    EXPECT_EQ(UndoRing::SlotCountValue(32767, 1, 1), 32767) << "capped to the 16-bit index";
}

TEST(UndoRingSize, AllocationFollowsThePreference) {
    testing::TestHost host;
    host.setUndoBudget(64);
    host.newDocument(640, 480);
    const UndoRing& ring = host.workspace.undo;
    EXPECT_EQ(ring.UndoMaxIndex, 54);
    EXPECT_EQ(ring.UndoPlaneA.slotCount(), 55u);
    EXPECT_EQ(ring.UndoPlaneA.slotBytes(), 641u * 481u);
    EXPECT_EQ(ring.SlotStates.size(), 55u);
}

TEST(UndoRingSize, FailureIsReportedAndTheDocumentGoesOn) {
    testing::TestHost host;
    host.system.memory = 1 << 20;
    host.setUndoBudget(64);
    host.newDocument(64, 64);
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(host.prompter.messages[0],
              "Can't allocate undo buffers.  Try increasing undo memory.");
    EXPECT_FALSE(host.workspace.undo.allocated());
    Document& doc = host.workspace.document;
    SetPixel(doc, 1, 1, {1, 2, 3});
    SaveUndo(host.workspace);
    RestoreUndo(host.workspace);
    EXPECT_FALSE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 1, 1), 197121);
    EXPECT_EQ(doc.width, 64);
}

TEST(UndoSave, WalksDownwardAndWraps) {
    testing::TestHost host;
    host.setUndoBudget(64);
    host.newDocument(640, 480);
    UndoRing& ring = host.workspace.undo;
    ring.UndoIndex = 0;
    for (int expected : {54, 53, 52}) {
        SaveUndo(host.workspace);
        EXPECT_EQ(ring.UndoIndex, expected);
    }
    EXPECT_EQ(ring.UndoFreshFlag, 1);

    ring.UndoDisabledFlag = true;
    SaveUndo(host.workspace);
    EXPECT_EQ(ring.UndoIndex, 52);
}

TEST(UndoSave, TheTwoWorkersMoveEveryByteOfEachPlane) {
    constexpr std::size_t kBytes = 4099;
    std::vector<std::uint8_t> sources[4];
    std::vector<std::uint8_t> destinations[4];
    UndoCopyJob job{};
    for (int p = 0; p < 4; ++p) {
        sources[p].resize(kBytes);
        std::iota(sources[p].begin(), sources[p].end(), static_cast<std::uint8_t>(p * 50));
        destinations[p].assign(kBytes, 0);
        job.sources[p] = sources[p].data();
        job.destinations[p] = destinations[p].data();
    }
    job.workerCount = 2;
    job.planeBytes = kBytes;
    job.workerNumber = 2;
    RunUndoCopyWorker(job);
    for (const auto& d : destinations) {
        EXPECT_EQ(std::count(d.begin(), d.end(), 0), static_cast<std::ptrdiff_t>(kBytes));
    }
    job.workerNumber = 1;
    RunUndoCopyWorker(job);
    EXPECT_EQ(destinations[0][5], 0) << "worker 1 leaves red and green alone";
    EXPECT_EQ(destinations[2], sources[2]);
    EXPECT_EQ(destinations[3], sources[3]);
    job.workerNumber = 0;
    RunUndoCopyWorker(job);
    EXPECT_EQ(destinations[0], sources[0]);
    EXPECT_EQ(destinations[1], sources[1]);
}

// Each step paints a different colour into the whole image and saves first,
// as every operation does; image k is coloured k.
class UndoHistory : public ::testing::Test {
  protected:
    void SetUp() override {
        host.newDocument(5, 4);
        ClearImage(doc(), {0, 0, 0});
    }
    Document& doc() { return host.workspace.document; }
    void step(std::uint8_t k) {
        SaveUndo(host.workspace);
        ClearImage(doc(), {k, k, k});
        doc().ABuffer.at(5, 4) = k;  // the spare column travels too
    }
    int shown() { return doc().RBuffer.at(2, 2); }
    testing::TestHost host;
};

TEST_F(UndoHistory, UndoAndRedoWalkBackAndForthInOrder) {
    step(1);
    step(2);
    step(3);
    std::vector<int> seen;
    while (EditUndo(host.workspace)) {
        seen.push_back(shown());
    }
    // 0 is the cleared image saved before step 1; the new document's own
    // white step lies below it.
    EXPECT_EQ(seen, (std::vector<int>{2, 1, 0, 255}));
    seen.clear();
    while (EditRedo(host.workspace)) {
        seen.push_back(shown());
    }
    EXPECT_EQ(seen, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(doc().ABuffer.at(5, 4), 3);

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 2);
    ASSERT_TRUE(EditRedo(host.workspace));
    EXPECT_EQ(shown(), 3);
    ASSERT_TRUE(EditUndo(host.workspace));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 1);
}

TEST_F(UndoHistory, ANewStepAfterUndoDropsTheRedoSteps) {
    step(1);
    step(2);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 1);
    step(7);
    EXPECT_FALSE(CanRedo(host.workspace));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 1);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 0);
}

TEST_F(UndoHistory, RestoreKeepsTheCurrentImageBelowTheSlotForRedo) {
    UndoRing& ring = host.workspace.undo;
    ring.UndoIndex = 5;
    step(1);  // saves into slot 4
    ASSERT_EQ(ring.UndoIndex, 4);
    RestoreUndo(host.workspace);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(ring.UndoIndex, 4);
    EXPECT_EQ(ring.UndoFreshFlag, 0);
    EXPECT_EQ(ring.UndoPlaneR.slot(3)[0], 1) << "the image on screen, kept for redo";

    ring.RedoFlag = true;
    RestoreUndo(host.workspace);
    EXPECT_EQ(ring.UndoIndex, 5) << "after a redo the restore moves up first";
}

TEST_F(UndoHistory, TheRingWrapsAndNeverUndoesIntoOverwrittenSlots) {
    host.setUndoBudget(0);  // ring value 2: three slots
    host.newDocument(5, 4);
    UndoRing& ring = host.workspace.undo;
    ASSERT_EQ(ring.UndoMaxIndex, 2);
    for (std::uint8_t k = 1; k <= 6; ++k) {
        step(k);
    }
    std::vector<int> seen;
    while (EditUndo(host.workspace)) {
        seen.push_back(shown());
    }
    EXPECT_EQ(seen, (std::vector<int>{5, 4}));
    seen.clear();
    while (EditRedo(host.workspace)) {
        seen.push_back(shown());
    }
    EXPECT_EQ(seen, (std::vector<int>{5, 6}));
}

TEST_F(UndoHistory, StateBytesComeBackWithTheirSlot) {
    doc().AlphaBitsFlag = 255;
    doc().modified = false;
    step(1);
    doc().AlphaBitsFlag = 0;
    doc().modified = true;
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(doc().AlphaBitsFlag, 255);
    EXPECT_EQ(doc().modified, false);
    ASSERT_TRUE(EditRedo(host.workspace));
    EXPECT_EQ(doc().AlphaBitsFlag, 0);
    EXPECT_EQ(doc().modified, true);
    EXPECT_GE(host.view.refreshes, 2);
}

TEST_F(UndoHistory, TheSecondRingSavesAndRestoresTheDepthPlanes) {
    EnableDepthLayer(host.workspace);
    DepthLayer& depth = *doc().Depth;
    EXPECT_EQ(depth.Height.at(5, 4), -20000.0f);
    step(1);
    ASSERT_TRUE(host.workspace.undo.SecondRingAllocated);
    depth.Height.at(1, 1) = 3.5f;
    depth.G.at(1, 1) = 77;
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(depth.Height.at(1, 1), -20000.0f);
    EXPECT_EQ(depth.G.at(1, 1), 0);
    ASSERT_TRUE(EditRedo(host.workspace));
    EXPECT_EQ(depth.Height.at(1, 1), 3.5f);
    EXPECT_EQ(depth.G.at(1, 1), 77);
}

TEST_F(UndoHistory, ASecondRingThatDoesNotFitIsReportedAndTheMainRingGoesOn) {
    EnableDepthLayer(host.workspace);
    host.system.memory = 1000;
    step(1);
    EXPECT_FALSE(host.workspace.undo.SecondRingAllocated);
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(host.prompter.messages[0], "Could not allocate all undos for this operation.");
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(shown(), 0);
}

}  // namespace
}  // namespace wib
