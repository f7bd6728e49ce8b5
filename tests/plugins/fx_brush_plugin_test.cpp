// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include "plugins/canvas_events.h"
#include "plugins/plugin_launcher.h"
#include "tests/plugins/server_fixture.h"
#include "tests/support/qt_wait.h"

namespace wib::testing {
namespace {

constexpr int kWhite = 0xffffff;
constexpr int kRed = 255;

// The built Fx brush started as the program starts it, against the server
// of the tests, its strokes given through the canvas events.
class FxBrushPluginTest : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        automation.canvasEvents = &events;
        client = connectedClient();
        client->call("Wib_ClearBuffer", Params(255, 255, 255));
        client->call("Wib_SetPrimaryColor", Params(kRed));
        launcher.setServer(server.fullServerName(), kToken);
    }
    void TearDown() override {
        launcher.shutDown();
        server.close();
    }

    int pixel(int x, int y) { return client->call("Wib_GetRGB", Params(x, y)).result().as<int>(); }

    // Serves the plug-in until `done` holds; false after ten seconds.

    CanvasEvents events;
    PluginLauncher launcher;
    std::unique_ptr<RawClient> client;
};

TEST_F(FxBrushPluginTest, DragPaintsStarsAndEndEndsThePlugin) {
    ASSERT_GT(launcher.start(WIB_FX_BRUSH, WindowStyle::TakesFocus), 0);
    ASSERT_TRUE(testing::PumpUntil([this] { return events.listening(); }));

    // The smallest stars (no pressure) two pixels apart along row 1.
    events.mouseDown({1, 0, 1, 1, 0.0});
    events.mouseMove({1, 0, 7, 1, 0.0});
    events.mouseUp({1, 0, 7, 1, 0.0});
    ASSERT_TRUE(testing::PumpUntil([this] { return pixel(7, 1) == kRed; }));
    EXPECT_EQ(pixel(1, 1), kRed);
    EXPECT_EQ(pixel(5, 1), kRed);
    // Below the trail's reach the image is as it was.
    EXPECT_EQ(pixel(7, 5), kWhite);
    // Half-way along an arm, a third of the way from white to red.
    EXPECT_EQ(pixel(1, 3), 255 + 256 * 170 + 65536 * 170);

    // A move with no button held paints nothing.
    events.mouseMove({0, 0, 4, 5, 1.0});
    events.end();
    ASSERT_TRUE(testing::PumpUntil(
        [this] { return launcher.children().front().state == ChildPlugin::State::Ended; }));
    EXPECT_EQ(launcher.children().front().exitCode, 0);
    EXPECT_EQ(pixel(4, 5), kWhite);
    EXPECT_FALSE(events.listening());

    // The stroke was one undo step.
    client->call("Wib_RestoreUndo");
    EXPECT_EQ(pixel(7, 1), kWhite);
    EXPECT_EQ(pixel(1, 1), kWhite);
}

}  // namespace
}  // namespace wib::testing
