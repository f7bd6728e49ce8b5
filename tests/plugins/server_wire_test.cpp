// SPDX-License-Identifier: GPL-3.0-or-later
// The server's defences: its socket's permissions, the connection limit,
// turns between connections, answers left unread, and plug-ins killed while
// sending a plane or holding locks (real child processes, killed with SIGKILL).

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDeadlineTimer>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/plugins/server_fixture.h"

extern char** environ;

namespace wib::testing {
namespace {

using ServerWire = ServerFixture;

TEST_F(ServerWire, TheSocketIsTheOwnersAlone) {
    struct stat status {};
    ASSERT_EQ(stat(server.fullServerName().toLocal8Bit().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(ServerWire, ASixtyFifthConnectionIsClosedAtOnceAndRoomComesBack) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 64; ++i) {
        clients.push_back(std::make_unique<RawClient>(server.fullServerName()));
        RawClient::settle();  // accepted before the listen queue fills
    }
    RawClient::settle();
    EXPECT_EQ(server.connectionCount(), 64u);
    RawClient extra(server.fullServerName());
    EXPECT_TRUE(extra.waitClosed());
    EXPECT_TRUE(
        logHas("Plug-in connection refused: the limit of 64 connections at once was reached."));

    // The first 64 are still served; once one leaves, a newcomer is too.
    EXPECT_EQ(clients.back()->call("Wib_Connect", Params(std::string(kToken))).errorCode, 0);
    clients.front()->close();
    RawClient::settle();
    EXPECT_EQ(connectedClient()->call("Wib_BufferWidth").result().as<int>(), 8);
}

// A connection that sends many calls at once and one that sends a single
// call: the single call runs after at most a few of the many, not after all.
TEST_F(ServerWire, ConnectionsTakeTurnsOneCallEach) {
    auto flood = connectedClient();
    auto single = connectedClient();
    msgpack::sbuffer calls;
    for (int i = 1; i <= 250; ++i) {
        msgpack::packer<msgpack::sbuffer> packer(calls);
        packer.pack_array(4);
        packer.pack(0);
        packer.pack(1000 + i);
        packer.pack(std::string("Wib_SetRGB"));
        packer.pack_array(5);
        packer.pack(0);
        packer.pack(0);
        packer.pack(i);
        packer.pack(0);
        packer.pack(0);
    }
    flood->sendRaw(calls);
    const Response answer = single->call("Wib_GetR", Params(0, 0));
    // The red byte counts the flood's calls that ran before the single one.
    EXPECT_LT(answer.result().as<int>(), 5);
    for (int i = 1; i <= 250; ++i) {
        ASSERT_TRUE(flood->next());
    }
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 250);
}

// A plug-in on a bare socket, which reads only when told to.
class SilentPlugin {
  public:
    explicit SilentPlugin(const QString& server) {
        fd_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = server.toLocal8Bit();
        std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
        if (connect(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw std::runtime_error("cannot connect");
        }
        fcntl(fd_, F_SETFL, O_NONBLOCK);
        send("Wib_Connect", Params(std::string(kToken)));
        RawClient::settle();
        read();
    }
    ~SilentPlugin() { close(); }

    void send(const std::string& method, const msgpack::sbuffer& params) {
        msgpack::sbuffer request;
        msgpack::packer<msgpack::sbuffer> packer(request);
        packer.pack_array(4);
        packer.pack(0);
        packer.pack(nextId_++);
        packer.pack(method);
        request.write(params.data(), params.size());
        if (write(fd_, request.data(), request.size()) != static_cast<ssize_t>(request.size())) {
            throw std::runtime_error("cannot send");
        }
    }
    // Bytes that have arrived, all read and thrown away.
    std::size_t read() {
        std::size_t total = 0;
        std::vector<char> bytes(1 << 20);
        ssize_t got;
        while ((got = ::read(fd_, bytes.data(), bytes.size())) > 0) {
            total += static_cast<std::size_t>(got);
        }
        return total;
    }
    void close() {
        if (fd_ >= 0) {
            ::close(fd_);
            fd_ = -1;
        }
    }

  private:
    int fd_ = -1;
    int nextId_ = 1;
};

// Planes of 1 MB asked for and never read: the server stops reading the
// requests once the unread answers pass their bound (4 MB, more than two
// planes of this document), goes on when the plug-in reads, and gives
// everything back when it leaves.
TEST_F(ServerWire, AnswersLeftUnreadAreBoundedAndGivenBackOnClose) {
    host.newDocument(1023, 1023);
    constexpr int kCalls = 40;
    constexpr std::size_t kPlane = 1024 * 1024;
    constexpr std::size_t kAnswer = kPlane + 16;  // [1, id, nil, [1023, 1023, bin32]]
    constexpr std::size_t kBound = 4 << 20;
    SilentPlugin reader(server.fullServerName());
    for (int i = 0; i < kCalls; ++i) {
        reader.send("Wib_GetRBuffer", Params());
    }
    for (int i = 0; i < 20; ++i) {
        RawClient::settle();
    }
    EXPECT_GT(server.unsentBytes(), kBound / 2);
    EXPECT_LE(server.unsentBytes(), kBound + kAnswer);
    std::size_t received = 0;
    QDeadlineTimer deadline(10000);
    while (received < kCalls * kAnswer && !deadline.hasExpired()) {
        RawClient::settle();
        received += reader.read();
    }
    EXPECT_EQ(received, kCalls * kAnswer);

    SilentPlugin leaver(server.fullServerName());
    for (int i = 0; i < kCalls; ++i) {
        leaver.send("Wib_GetRBuffer", Params());
    }
    for (int i = 0; i < 20; ++i) {
        RawClient::settle();
    }
    EXPECT_GT(server.unsentBytes(), kBound / 2);
    leaver.close();
    reader.close();
    for (int i = 0; i < 20 && server.connectionCount() > 0; ++i) {
        RawClient::settle();
    }
    EXPECT_EQ(server.unsentBytes(), 0u);
    EXPECT_EQ(server.connectionCount(), 0u);
}

// A plug-in process started with the server's name and token, killed with
// SIGKILL once it says it is where it was told to stop.
class DyingPlugin {
  public:
    DyingPlugin(const QString& server, const char* mode) {
        int out[2];
        if (pipe(out) != 0) {
            throw std::runtime_error("pipe");
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, out[0]);
        const std::string name = server.toStdString();
        std::vector<std::string> words = {"/usr/bin/python3", WIB_DYING_PLUGIN, name, kToken, mode};
        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        if (posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
            throw std::runtime_error("cannot start python3");
        }
        posix_spawn_file_actions_destroy(&actions);
        ::close(out[1]);
        out_ = out[0];
        fcntl(out_, F_SETFL, O_NONBLOCK);
    }
    ~DyingPlugin() {
        kill();
        ::close(out_);
    }

    // Serves the plug-in (runs the event loop) until it says "ready".
    bool waitReady() {
        std::string said;
        QDeadlineTimer deadline(10000);
        while (!deadline.hasExpired() && said.find("ready") == std::string::npos) {
            RawClient::settle();
            char bytes[64];
            const ssize_t got = read(out_, bytes, sizeof bytes);
            if (got > 0) {
                said.append(bytes, static_cast<std::size_t>(got));
            }
        }
        return said.find("ready") != std::string::npos;
    }

    void kill() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
            pid_ = -1;
        }
    }

  private:
    pid_t pid_ = -1;
    int out_ = -1;
};

TEST_F(ServerWire, APlugInKilledInTheMiddleOfAPlaneChangesNothing) {
    host.newDocument(512, 512);
    host.workspace.document.RBuffer.fill(77);
    {
        DyingPlugin plugin(server.fullServerName(), "plane");
        ASSERT_TRUE(plugin.waitReady());
        plugin.kill();
    }
    for (int i = 0; i < 20 && server.connectionCount() > 0; ++i) {
        RawClient::settle();
    }
    EXPECT_EQ(server.connectionCount(), 0u);
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 77);
    EXPECT_EQ(host.workspace.document.RBuffer.at(512, 512), 77);
    const Response answer = connectedClient()->call(
        "Wib_SetRbuffer", PlaneParams(512, 512, std::string(513 * 513, '\x05')));
    EXPECT_EQ(answer.errorCode, 0);
    EXPECT_EQ(host.workspace.document.RBuffer.at(512, 512), 5);
}

TEST_F(ServerWire, APlugInThatLeavesWithThePointerChangedGivesItBack) {
    host.workspace.pointerShape = 2;
    auto client = connectedClient();
    ASSERT_EQ(client->call("Wib_ChangePointer", Params(11)).errorCode, 0);
    client->close();
    for (int i = 0; i < 20 && server.connectionCount() > 0; ++i) {
        RawClient::settle();
    }
    EXPECT_EQ(host.workspace.pointerShape, 2);
    EXPECT_EQ(host.view.pointerShapes, (std::vector<int>{11, 2}));
}

TEST_F(ServerWire, APlugInKilledHoldingLocksGivesThemBack) {
    {
        DyingPlugin plugin(server.fullServerName(), "locks");
        ASSERT_TRUE(plugin.waitReady());
        ASSERT_FALSE(host.view.mainFrameEnabled);
        ASSERT_FALSE(host.view.canvasEnabled);
        plugin.kill();
    }
    for (int i = 0; i < 20 && server.connectionCount() > 0; ++i) {
        RawClient::settle();
    }
    EXPECT_TRUE(host.view.mainFrameEnabled);
    EXPECT_TRUE(host.view.canvasEnabled);
    EXPECT_EQ(connectedClient()->call("Wib_BufferWidth").result().as<int>(), 8);
}

}  // namespace
}  // namespace wib::testing
