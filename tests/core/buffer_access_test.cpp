#include <gtest/gtest.h>

#include <cstring>

#include "core/buffer_access.h"
#include "core/document_build.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class BufferAccess : public ::testing::Test {
  protected:
    void SetUp() override { host.newDocument(8, 6); }
    testing::TestHost host;
    Document& doc = host.workspace.document;
};

TEST_F(BufferAccess, NewDocumentIsWhiteWithFullAlpha) {
    EXPECT_EQ(Wib_BufferWidth(doc), 8);
    EXPECT_EQ(Wib_BufferHeight(doc), 6);
    EXPECT_EQ(doc.RBuffer.ubX(), 8);
    EXPECT_EQ(doc.RBuffer.ubY(), 6);
    EXPECT_EQ(Wib_GetRGB(doc, 8, 6), 0xFFFFFF);
    EXPECT_EQ(doc.ABuffer.at(3, 3), 255);
    EXPECT_EQ(doc.SwapB.at(0, 0), 255);
}

TEST_F(BufferAccess, PixelReadsAndWritesPackColourAndRefuseOutsideThePlanes) {
    Wib_SetRGB(doc, 2, 3, 1, 2, 3);
    EXPECT_EQ(Wib_GetRGB(doc, 2, 3), 197121);
    EXPECT_EQ(Wib_GetR(doc, 2, 3), 1);
    EXPECT_EQ(Wib_GetG(doc, 2, 3), 2);
    EXPECT_EQ(Wib_GetB(doc, 2, 3), 3);

    const Plane before = doc.RBuffer;
    EXPECT_THROW(Wib_SetRGB(doc, 9, 0, 0, 0, 0), SubscriptError);
    EXPECT_THROW(Wib_SetRGB(doc, 0, -1, 0, 0, 0), SubscriptError);
    EXPECT_THROW(Wib_GetRGB(doc, 0, 7), SubscriptError);
    EXPECT_EQ(std::memcmp(before.data(), doc.RBuffer.data(), before.count()), 0);
}

TEST_F(BufferAccess, PlaneGettersReturnCopies) {
    Plane copy = Wib_GetRBuffer(doc);
    copy.at(0, 0) = 7;
    EXPECT_EQ(doc.RBuffer.at(0, 0), 255);
    EXPECT_TRUE(Wib_SetRbuffer(host.workspace, std::move(copy)));
    EXPECT_EQ(doc.RBuffer.at(0, 0), 7);
    EXPECT_TRUE(copy.empty()) << "the plane takes the array over";
}

TEST_F(BufferAccess, MismatchedPlaneIsRefusedAndOnlyTheRedSetterSaysSo) {
    EXPECT_FALSE(Wib_SetGBuffer(doc, Plane(8, 5, 0)));
    EXPECT_FALSE(Wib_SetABuffer(doc, Plane(7, 6, 0)));
    EXPECT_FALSE(Wib_SetSwapRBuffer(doc, Plane(9, 6, 0)));
    EXPECT_TRUE(host.prompter.messages.empty());
    EXPECT_EQ(doc.GBuffer.at(0, 0), 255);
    EXPECT_EQ(doc.ABuffer.at(0, 0), 255);

    EXPECT_FALSE(Wib_SetRbuffer(host.workspace, Plane(8, 5, 0)));
    ASSERT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(host.prompter.messages[0],
              "Plugin fault.  Cannot set buffer because buffer size has changed.");
    EXPECT_EQ(doc.RBuffer.at(0, 0), 255);
}

TEST_F(BufferAccess, SettingAlphaRecomputesTheSelectionBounds) {
    Plane alpha(8, 6, 0);
    alpha.at(2, 1) = 10;
    alpha.at(5, 4) = 200;
    alpha.at(8, 6) = 255;  // spare column and row are not image
    ASSERT_TRUE(Wib_SetABuffer(doc, std::move(alpha)));
    EXPECT_EQ(doc.SelectionBounds.left, 2);
    EXPECT_EQ(doc.SelectionBounds.top, 1);
    EXPECT_EQ(doc.SelectionBounds.right, 5);
    EXPECT_EQ(doc.SelectionBounds.bottom, 4);
}

TEST_F(BufferAccess, BrushPlanesAreMinusOneUntilACustomBrushIsActive) {
    EXPECT_FALSE(Wib_GetBrushRBuffer(doc).has_value());
    doc.BrushA = Plane(3, 2, 128);
    doc.CustomBrushActive = true;
    const auto brush = Wib_GetBrushABuffer(doc);
    ASSERT_TRUE(brush.has_value());
    EXPECT_EQ(brush->ubX(), 3);
    EXPECT_EQ(brush->at(3, 2), 128);
}

TEST_F(BufferAccess, ClearFillsOnlyTheMainPlanes) {
    Wib_ClearBuffer(doc, 10, 20, 30);
    EXPECT_EQ(Wib_GetRGB(doc, 8, 6), 10 + 20 * 256 + 30 * 65536);
    EXPECT_EQ(Wib_GetRGB(doc, 0, 0), 10 + 20 * 256 + 30 * 65536);
    EXPECT_EQ(doc.ABuffer.at(0, 0), 255);
    EXPECT_EQ(doc.SwapR.at(0, 0), 255);
}

TEST_F(BufferAccess, LockCounterHasNoFloorUntilHardUnlock) {
    Wib_Lock(doc);
    Wib_Unlock(doc);
    Wib_Unlock(doc);
    Wib_Unlock(doc);
    EXPECT_EQ(doc.InterfaceLockCount, -2);
    Wib_HardUnlock(doc);
    EXPECT_EQ(doc.InterfaceLockCount, 0);

    Wib_LockBuffer(host.workspace);
    Wib_LockInterface(host.workspace);
    EXPECT_FALSE(host.view.canvasEnabled);
    EXPECT_FALSE(host.view.mainFrameEnabled);
    Wib_UnlockBuffer(host.workspace);
    Wib_UnlockInterface(host.workspace);
    EXPECT_TRUE(host.view.canvasEnabled && doc.CanvasEnabled);
    EXPECT_TRUE(host.view.mainFrameEnabled && doc.MainFrameEnabled);
}

TEST_F(BufferAccess, RefreshFlagsTakeOnlyMinusOneAsTrue) {
    Wib_SimpleRefresh(doc, -1);
    Wib_NoRefresh(doc, -1);
    Wib_RefreshTitleOnly(doc, -1);
    EXPECT_EQ(doc.SimpleRefreshFlag, 255);
    EXPECT_EQ(doc.NoRefreshFlag, -1);
    EXPECT_EQ(doc.TitleOnlyRefreshFlag, 255);
    EXPECT_EQ(CurrentRefreshScope(doc), RefreshScope::None);

    Wib_NoRefresh(doc, 1);
    EXPECT_EQ(doc.NoRefreshFlag, 0);
    EXPECT_EQ(CurrentRefreshScope(doc), RefreshScope::TitleOnly);
    Wib_RefreshTitleOnly(doc, 0);
    EXPECT_EQ(CurrentRefreshScope(doc), RefreshScope::CanvasOnly);
    Wib_SimpleRefresh(doc, 1);
    EXPECT_EQ(doc.SimpleRefreshFlag, 0);
    EXPECT_EQ(CurrentRefreshScope(doc), RefreshScope::Complete);

    const int before = host.view.eventPumps;
    Wib_CompleteRefresh(host.workspace);
    EXPECT_EQ(host.view.eventPumps, before + 1);
    EXPECT_EQ(host.view.completeRefreshes, 1);
}

TEST(NewBuffer, BadSizesGetAMessageAndChangeNothing) {
    testing::TestHost host;
    host.newDocument(5, 4);
    host.workspace.document.Zoom = 300;
    for (auto [w, h] : {std::pair{0, 10}, {10, -3}, {16385, 10}, {10, 40000}}) {
        EXPECT_FALSE(NewDocument(host.workspace, w, h));
    }
    EXPECT_EQ(host.prompter.messages.size(), 4u);
    EXPECT_EQ(host.workspace.document.width, 5);
    EXPECT_EQ(host.workspace.document.Zoom, 300);

    EXPECT_TRUE(NewDocument(host.workspace, 16, 9));
    EXPECT_EQ(host.workspace.document.Zoom, 100);
    EXPECT_EQ(host.workspace.document.ViewAnchorX, -1.0f);
    EXPECT_EQ(host.workspace.document.RBuffer.ubY(), 9);
    EXPECT_EQ(host.workspace.undo.UndoIndex, host.workspace.undo.UndoMaxIndex)
        << "one undo step saved";
}

}  // namespace
}  // namespace wib
