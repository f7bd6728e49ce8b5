// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "core/document_build.h"
#include "plugins/rpc_error.h"
#include "tests/plugins/program_parts.h"
#include "tests/plugins/server_fixture.h"

namespace wib::testing {
namespace {

using ServerProtocol = ServerFixture;

QByteArray Bytes(const msgpack::sbuffer& buffer) {
    return QByteArray(buffer.data(), static_cast<qsizetype>(buffer.size()));
}

msgpack::sbuffer Request(std::uint32_t msgid, const std::string& method,
                         const msgpack::sbuffer& params) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(4);
    packer.pack(0);
    packer.pack(msgid);
    packer.pack(method);
    buffer.write(params.data(), params.size());
    return buffer;
}

TEST_F(ServerProtocol, AnythingButConnectFirstIsRefusedAndClosed) {
    RawClient client(server.fullServerName());
    const Response answer = client.call("Wib_GetRGB", Params(0, 0));
    EXPECT_EQ(answer.errorCode, kErrorPermission);
    EXPECT_EQ(answer.errorMessage, "Permission denied");
    EXPECT_TRUE(client.waitClosed());
    EXPECT_TRUE(logHas("refused"));
}

TEST_F(ServerProtocol, AWrongTokenIsRefusedAndClosed) {
    RawClient client(server.fullServerName());
    const Response answer = client.call("Wib_Connect", Params(std::string("guess")));
    EXPECT_EQ(answer.errorCode, kErrorPermission);
    EXPECT_TRUE(client.waitClosed());

    // The right token is answered -1 on a connection of its own.
    RawClient right(server.fullServerName());
    EXPECT_EQ(right.call("Wib_Connect", Params(std::string(kToken))).result().as<int>(), -1);

    // A bulky first message is refused before it is read whole.
    RawClient bulky(server.fullServerName());
    bulky.sendRaw(Bytes(Request(1, "Wib_Connect", Params(std::string(5000, 'x')))));
    EXPECT_TRUE(bulky.waitClosed());
}

TEST_F(ServerProtocol, CallsAnswerInOrderWhetherBatchedOrSplit) {
    Document& doc = host.workspace.document;
    doc.RBuffer.at(3, 2) = 1;
    doc.GBuffer.at(3, 2) = 2;
    doc.BBuffer.at(3, 2) = 3;
    auto client = connectedClient();
    // Three requests in one write.
    QByteArray batch = Bytes(Request(10, "Wib_BufferWidth", Params())) +
                       Bytes(Request(11, "Wib_NoSuchMethod", Params())) +
                       Bytes(Request(12, "Wib_GetRGB", Params(3, 2)));
    client->sendRaw(batch);
    const auto first = client->next();
    const auto second = client->next();
    const auto third = client->next();
    ASSERT_TRUE(first && second && third);
    EXPECT_EQ(first->msgid, 10u);
    EXPECT_EQ(first->result().as<int>(), 8);
    EXPECT_EQ(second->msgid, 11u);
    EXPECT_EQ(second->errorCode, kErrorUnknownMethod);
    EXPECT_EQ(third->result().as<int>(), 197121);

    // One request a byte at a time.
    const QByteArray set = Bytes(Request(13, "Wib_SetRGB", Params(1, 1, 4, 5, 6)));
    for (char byte : set) {
        client->sendRaw(QByteArray(1, byte));
        RawClient::settle();
    }
    const auto fourth = client->next();
    ASSERT_TRUE(fourth);
    EXPECT_EQ(fourth->msgid, 13u);
    EXPECT_EQ(doc.RBuffer.at(1, 1), 4);
    EXPECT_EQ(doc.GBuffer.at(1, 1), 5);
    EXPECT_EQ(doc.BBuffer.at(1, 1), 6);
}

TEST_F(ServerProtocol, PlanesTravelWholeAndNotificationsRunUnanswered) {
    std::string expected;
    Plane& green = host.workspace.document.GBuffer;
    for (std::size_t i = 0; i < green.count(); ++i) {
        green.data()[i] = static_cast<std::uint8_t>(i * 5);
        expected += static_cast<char>(i * 5);
    }
    auto client = connectedClient();
    const Response plane = client->call("Wib_GetGBuffer");
    const msgpack::object& value = plane.result();
    ASSERT_EQ(value.via.array.size, 3u);
    EXPECT_EQ(value.via.array.ptr[0].as<int>(), 8);
    EXPECT_EQ(value.via.array.ptr[1].as<int>(), 6);
    const msgpack::object_bin& bytes = value.via.array.ptr[2].via.bin;
    EXPECT_EQ(std::string(bytes.ptr, bytes.size), expected);

    msgpack::sbuffer notification;
    msgpack::packer<msgpack::sbuffer> packer(notification);
    packer.pack_array(3);
    packer.pack(2);
    packer.pack(std::string("Wib_Lock"));
    packer.pack_array(0);
    client->sendRaw(notification);
    const Response after = client->call("Wib_BufferHeight");
    EXPECT_EQ(after.result().as<int>(), 6);
    EXPECT_EQ(host.workspace.lock.count, 1);
}

TEST_F(ServerProtocol, MalformedOrOversizedMessagesDropOnlyTheirConnection) {
    auto good = connectedClient();
    const std::vector<QByteArray> bad = {
        QByteArray("\xc1", 1),                                    // not msgpack
        QByteArray("\x93\x00\x01\xa4Wib_", 8),                    // too short for a request
        QByteArray("\x94\x01\x01\xa1x\x90", 6),                   // a response, from a plug-in
        QByteArray("\x94\x00\x01\x05\x90", 5),                    // method is not text
        QByteArray("\x94\x00\x01\xa1x\xc6\x7f\x00\x00\x00", 10),  // huge binary declared
        QByteArray(20, '\x91'),                                   // nested too deeply
    };
    for (const QByteArray& bytes : bad) {
        auto client = connectedClient();
        client->sendRaw(bytes);
        EXPECT_TRUE(client->waitClosed()) << bytes.toHex().toStdString();
    }
    EXPECT_TRUE(logHas("dropped"));
    EXPECT_EQ(good->call("Wib_BufferWidth").result().as<int>(), 8);
}

TEST_F(ServerProtocol, AClientThatLeavesMidMessageChangesNothing) {
    auto client = connectedClient();
    const QByteArray whole =
        Bytes(Request(5, "Wib_SetRbuffer", PlaneParams(8, 6, std::string(63, '\0'))));
    client->sendRaw(whole.left(whole.size() / 2));
    RawClient::settle();
    client->close();
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 255);
    // The same message whole, from the next client, does change the plane.
    auto next = connectedClient();
    next->sendRaw(whole);
    ASSERT_TRUE(next->next());
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 0);
}

TEST_F(ServerProtocol, AClientThatDiesHoldingLocksHasThemGivenBack) {
    {
        auto client = connectedClient();
        client->call("Wib_Lock");
        client->call("Wib_LockInterface");
        client->call("Wib_LockBuffer");
        client->call("Wib_StatusOpen", Params(std::string("Working")));
        ASSERT_FALSE(host.view.mainFrameEnabled);
        ASSERT_FALSE(host.view.canvasEnabled);
        client->close();
    }
    EXPECT_TRUE(host.view.mainFrameEnabled);
    EXPECT_TRUE(host.view.canvasEnabled);
    EXPECT_TRUE(host.workspace.lock.mainFrameEnabled);
    EXPECT_EQ(host.workspace.lock.count, 1);
    EXPECT_EQ(host.prompter.statusLog.back(), "close");
    EXPECT_TRUE(
        logHas("Plug-in disconnected while holding the interface lock; windows enabled again."));
    EXPECT_TRUE(logHas("buffer lock"));
    EXPECT_TRUE(logHas("status window closed"));

    // The next plug-in is served, and finds the default caption again.
    auto next = connectedClient();
    next->call("Wib_StatusOpen");
    EXPECT_EQ(host.prompter.statusLog.back(), "open:Processing...");
    next->call("Wib_HardUnlock");
    EXPECT_EQ(host.workspace.lock.count, 0);
}

TEST_F(ServerProtocol, AClientThatReleasedItsLocksLeavesNoTrace) {
    auto client = connectedClient();
    client->call("Wib_LockInterface");
    client->call("Wib_UnlockInterface");
    const std::size_t lines = host.log.lines.size();
    client->close();
    EXPECT_EQ(host.log.lines.size(), lines);
}

}  // namespace
}  // namespace wib::testing

namespace wib::testing {
namespace {

// A view whose first event pump lets a second plug-in send a call and gives
// the server every chance to read it, noting the lock count around the pump.
class PumpingView : public RecordingView {
  public:
    void processPendingEvents() override {
        const int before = lock->count;
        if (const auto action = std::exchange(duringPump, nullptr)) {
            action();
        }
        RawClient::settle();
        changedDuringPump = lock->count != before;
    }
    const InterfaceLock* lock = nullptr;
    std::function<void()> duringPump;
    bool changedDuringPump = false;
};

TEST(ServerOrder, ACallThatLetsEventsRunFinishesBeforeTheNextOneStarts) {
    TestHost fakes;
    PumpingView view;
    Workspace workspace(HostServices{fakes.prompter, fakes.preferences, fakes.clock, view,
                                     fakes.system, fakes.log});
    view.lock = &workspace.lock;
    NewDocument(workspace, 8, 6);
    CommandRegistry commands;
    MapControls controls;
    ProgramParts parts(workspace);
    AutomationHost host{workspace, commands,    controls,    "",          "",
                        1,         parts.paint, parts.files, parts.frames};
    AutomationServer server(host);
    ASSERT_TRUE(server.listen(
        QString("wib-automation-order-%1").arg(QCoreApplication::applicationPid()), kToken));

    RawClient first(server.fullServerName());
    RawClient second(server.fullServerName());
    first.call("Wib_Connect", Params(std::string(kToken)));
    second.call("Wib_Connect", Params(std::string(kToken)));
    std::uint32_t lockId = 0;
    view.duringPump = [&] { lockId = second.send("Wib_Lock", Params()); };
    EXPECT_EQ(first.call("Wib_CompleteRefresh").errorCode, 0);
    EXPECT_FALSE(view.changedDuringPump);
    const auto lockAnswer = second.next();
    ASSERT_TRUE(lockAnswer);
    EXPECT_EQ(lockAnswer->msgid, lockId);
    EXPECT_EQ(workspace.lock.count, 1);
}

}  // namespace
}  // namespace wib::testing
