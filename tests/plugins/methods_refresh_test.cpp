// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/plugins/method_fixture.h"

namespace wib::testing {
namespace {

using Refresh = MethodFixture;

TEST_F(Refresh, TheLockCounterHasNoFloorUntilHardUnlock) {
    call("Wib_Lock");
    call("Wib_Lock");
    call("Wib_Unlock");
    EXPECT_EQ(host.workspace.lock.count, 1);
    for (int i = 0; i < 3; ++i) {
        call("Wib_Unlock");
    }
    EXPECT_EQ(host.workspace.lock.count, -2);
    call("Wib_HardUnlock");
    EXPECT_EQ(host.workspace.lock.count, 0);
}

TEST_F(Refresh, WindowLocksAreRecordedForTheConnection) {
    call("Wib_LockInterface");
    call("Wib_LockBuffer");
    EXPECT_FALSE(host.view.mainFrameEnabled);
    EXPECT_FALSE(host.view.canvasEnabled);
    EXPECT_TRUE(connection.interfaceLocked);
    EXPECT_TRUE(connection.bufferLocked);
    call("Wib_UnlockInterface");
    call("Wib_UnlockBuffer");
    EXPECT_TRUE(host.view.mainFrameEnabled);
    EXPECT_TRUE(host.view.canvasEnabled);
    EXPECT_FALSE(connection.interfaceLocked);
    EXPECT_FALSE(connection.bufferLocked);
}

TEST_F(Refresh, FlagsTakeOnlyMinusOneOrTrueAsTrue) {
    call("Wib_SimpleRefresh", Params(-1));
    call("Wib_NoRefresh", Params(true));
    call("Wib_RefreshTitleOnly", Params(-1));
    EXPECT_EQ(doc.SimpleRefreshFlag, 255);
    EXPECT_EQ(doc.NoRefreshFlag, -1);
    EXPECT_EQ(doc.TitleOnlyRefreshFlag, 255);

    call("Wib_SimpleRefresh", Params(1));
    call("Wib_NoRefresh", Params(false));
    call("Wib_RefreshTitleOnly", Params(0));
    EXPECT_EQ(doc.SimpleRefreshFlag, 0);
    EXPECT_EQ(doc.NoRefreshFlag, 0);
    EXPECT_EQ(doc.TitleOnlyRefreshFlag, 0);

    EXPECT_EQ(errorOf("Wib_NoRefresh", Params(std::string("yes"))), 5);
    EXPECT_EQ(errorOf("Wib_NoRefresh", Params()), 5);
}

TEST_F(Refresh, RedrawsReachTheView) {
    const int refreshes = host.view.refreshes;
    call("Wib_Refresh");
    EXPECT_EQ(host.view.refreshes, refreshes + 1);
    call("Wib_CompleteRefresh");
    EXPECT_EQ(host.view.eventPumps, 1);
    EXPECT_EQ(host.view.completeRefreshes, 1);
    call("Wib_Refresh_BrushDisplays");
    EXPECT_EQ(host.view.completeRefreshes, 2);
}

TEST_F(Refresh, RefreshLayersRebuildsThePanelAndRedrawsTheCanvas) {
    int rebuilds = 0;
    const Subscription panel =
        host.workspace.events.layersChanged.subscribe([&rebuilds] { ++rebuilds; });
    const int refreshes = host.view.refreshes;
    call("Wib_RefreshLayers");
    EXPECT_EQ(rebuilds, 1);
    EXPECT_EQ(host.view.refreshes, refreshes + 1);
}

TEST_F(Refresh, InitMarqueeRestartsTheAnts) {
    int restarts = 0;
    const Subscription listening =
        host.workspace.events.marqueeRestarted.subscribe([&restarts] { ++restarts; });
    call("Wib_InitMarquee");
    call("Wib_InitMarquee");
    EXPECT_EQ(restarts, 2);
}

}  // namespace
}  // namespace wib::testing
