// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugins/canvas_events.h"
#include "tests/plugins/server_fixture.h"

namespace wib::testing {
namespace {

constexpr int kTrue = -1;

// The server with a canvas whose pointer input plug-ins can take.
class CanvasEventsTest : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        automation.canvasEvents = &events;
    }
    // The connections hold turns of `events`, which goes before the server.
    void TearDown() override { server.close(); }

    std::unique_ptr<RawClient> listener() {
        auto client = connectedClient();
        EXPECT_EQ(client->call("Wib_ListenEvents", Params(kTrue)).result().as<int>(), kTrue);
        return client;
    }

    // The method and values of the client's next notification.
    static std::pair<std::string, std::vector<double>> Received(RawClient& client) {
        const auto message = client.nextNotification();
        if (!message) {
            return {"(nothing)", {}};
        }
        const msgpack::object& o = message->get();
        return {o.via.array.ptr[1].as<std::string>(), o.via.array.ptr[2].as<std::vector<double>>()};
    }

    CanvasEvents events;
};

TEST_F(CanvasEventsTest, ListenerGetsPointerEventsAsNotifications) {
    auto client = listener();
    ASSERT_TRUE(events.listening());
    events.mouseDown({1, 1, 5, 4, 0.5});
    events.mouseMove({1, 3, 6, 4, 0.25});
    events.mouseUp({2, 0, 7, 5, 1.0});
    using Values = std::vector<double>;
    EXPECT_EQ(Received(*client),
              std::make_pair(std::string("WibMouseDown"), Values{1, 1, 5, 4, 0.5}));
    EXPECT_EQ(Received(*client),
              std::make_pair(std::string("WibMouseMove"), Values{1, 3, 6, 4, 0.25}));
    EXPECT_EQ(Received(*client),
              std::make_pair(std::string("WibMouseUp"), Values{2, 0, 7, 5, 1.0}));
}

TEST_F(CanvasEventsTest, EachWayOfEndingTheTurnSendsWibEnd) {
    // The user's end (Esc, another tool).
    auto client = listener();
    events.end();
    EXPECT_FALSE(events.listening());
    EXPECT_EQ(Received(*client).first, "WibEnd");

    // The plug-in's own call.
    EXPECT_EQ(client->call("Wib_ListenEvents", Params(kTrue)).result().as<int>(), kTrue);
    EXPECT_EQ(client->call("Wib_ListenEvents", Params(0)).result().as<int>(), 0);
    EXPECT_FALSE(events.listening());
    EXPECT_EQ(Received(*client).first, "WibEnd");

    // Another plug-in that begins to listen takes the turn.
    EXPECT_EQ(client->call("Wib_ListenEvents", Params(kTrue)).result().as<int>(), kTrue);
    auto other = listener();
    EXPECT_EQ(Received(*client).first, "WibEnd");
    events.mouseDown({1, 0, 0, 0, 1.0});
    EXPECT_EQ(Received(*other).first, "WibMouseDown");
}

TEST_F(CanvasEventsTest, StoppingWithoutTheTurnLeavesTheListenerAlone) {
    auto client = listener();
    auto other = connectedClient();
    // 1 is not the program's true: it asks to stop, and `other` holds no turn.
    EXPECT_EQ(other->call("Wib_ListenEvents", Params(1)).result().as<int>(), 0);
    EXPECT_TRUE(events.listening());
    events.mouseUp({1, 0, 2, 2, 1.0});
    EXPECT_EQ(Received(*client).first, "WibMouseUp");
}

TEST_F(CanvasEventsTest, ListenerThatDisconnectsGivesTheCanvasBack) {
    auto client = listener();
    client->close();
    RawClient::settle();
    EXPECT_FALSE(events.listening());
    EXPECT_TRUE(logHas("the canvas paints again"));
    // A later listener is not disturbed by the old turn's end.
    auto next = listener();
    EXPECT_TRUE(events.listening());
}

}  // namespace
}  // namespace wib::testing
