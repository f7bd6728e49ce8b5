// SPDX-License-Identifier: GPL-3.0-or-later
// One 1920 x 1080 plane fetched and set back through the automation protocol
// (Wib_GetRBuffer into the same plane each time, then Wib_SetRbuffer, with the
// C++ client), against the same bytes sent over a plain Unix socket to a peer
// that sends them back. The figure gives the rate in GB/s too, and fails when
// the bytes come back changed. A second figure times the smallest call
// (Wib_BufferWidth) against a 16-byte ping-pong over a plain Unix socket.

#include <benchmark/benchmark.h>

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QThread>

#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "bench/figures.h"
#include "core/commands.h"
#include "plugins/automation_server.h"
#include "plugins/sdk/cpp/wibbleton_client.h"
#include "tests/plugins/program_parts.h"
#include "tests/support/test_host.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kPlaneBytes = std::size_t{kWidth + 1} * (kHeight + 1);
constexpr int kSocketBufferBytes = 4 << 20;
constexpr const char* kToken = "bench-token";

// Controls the benchmark never touches.
class NoControls : public wib::Controls {
  public:
    std::optional<wib::ParamValue> get(const std::string&, const std::string&) override {
        return std::nullopt;
    }
    bool set(const std::string&, const std::string&, const wib::ParamValue&) override {
        return false;
    }
};

// The automation server over a 1920 x 1080 document, serving from a thread of
// its own as the program's interface thread would.
class ServerThread {
  public:
    ServerThread() {
        host_.newDocument(kWidth, kHeight);
        std::promise<std::string> listening;
        auto name = listening.get_future();
        thread_.reset(QThread::create([this, &listening] {
            wib::AutomationServer server(automation_);
            server.listen(QDir::tempPath() + "/wib-bench-" +
                              QString::number(QCoreApplication::applicationPid()),
                          kToken);
            listening.set_value(server.fullServerName().toStdString());
            QEventLoop loop;
            loop.exec();
        }));
        thread_->start();
        path_ = name.get();
    }
    ~ServerThread() {
        thread_->quit();
        thread_->wait();
    }
    const std::string& path() const { return path_; }

  private:
    wib::testing::TestHost host_;
    wib::CommandRegistry commands_;
    NoControls controls_;
    wib::testing::ProgramParts parts_{host_.workspace};
    wib::AutomationHost automation_{host_.workspace, commands_,    controls_,    "", "", 1,
                                    parts_.paint,    parts_.files, parts_.frames};
    std::unique_ptr<QThread> thread_;
    std::string path_;
};

// A plane no two neighbouring rows of which are alike, so that a lost, doubled
// or shifted block of bytes shows.
wibbleton::Plane Pattern() {
    wibbleton::Plane plane(kWidth, kHeight);
    for (std::size_t i = 0; i < plane.data.size(); ++i) {
        plane.data[i] = static_cast<std::uint8_t>((i * 131 + i / 4099) % 251);
    }
    return plane;
}

// Each round trip sends back what it fetched, so the pattern set first must
// still be there, byte for byte, after the last one.
void PlaneRoundTrip(benchmark::State& state) {
    ServerThread server;
    wibbleton::Wibbleton_Class wib(server.path(), kToken);
    const wibbleton::Plane pattern = Pattern();
    wib.Wib_SetRbuffer(pattern);
    wibbleton::Plane red;
    for (auto _ : state) {
        wib.Wib_GetRBuffer(red);
        wib.Wib_SetRbuffer(red);
    }
    if (wib.Wib_GetRBuffer().data != pattern.data) {
        state.SkipWithError("the plane came back changed");
    }
    state.SetBytesProcessed(state.iterations() * 2 * static_cast<std::int64_t>(kPlaneBytes));
}

void EmptyCall(benchmark::State& state) {
    ServerThread server;
    wibbleton::Wibbleton_Class wib(server.path(), kToken);
    int width = 0;
    for (auto _ : state) {
        width = wib.Wib_BufferWidth();
    }
    if (width != kWidth) {
        state.SkipWithError("the call answered the wrong width");
    }
}

void SendAll(int fd, const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const ssize_t sent = write(fd, data, size);
        if (sent <= 0) {
            return;
        }
        data += sent;
        size -= static_cast<std::size_t>(sent);
    }
}

bool ReceiveAll(int fd, std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const ssize_t got = read(fd, data, size);
        if (got <= 0) {
            return false;
        }
        data += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

// The same bytes each way over a Unix socket with the same buffer sizes: the
// peer reads the whole plane, then sends it back.
void SocketEcho(benchmark::State& state) {
    int fds[2];
    socketpair(AF_UNIX, SOCK_STREAM, 0, fds);
    for (int fd : fds) {
        const int size = kSocketBufferBytes;
        setsockopt(fd, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
        setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    }
    std::jthread peer([fd = fds[1]] {
        std::vector<std::uint8_t> plane(kPlaneBytes);
        while (ReceiveAll(fd, plane.data(), plane.size())) {
            SendAll(fd, plane.data(), plane.size());
        }
    });
    std::vector<std::uint8_t> plane(kPlaneBytes, 7);
    std::vector<std::uint8_t> back(kPlaneBytes);
    for (auto _ : state) {
        SendAll(fds[0], plane.data(), plane.size());
        ReceiveAll(fds[0], back.data(), back.size());
    }
    shutdown(fds[0], SHUT_RDWR);
    peer.join();
    close(fds[0]);
    close(fds[1]);
    state.SetBytesProcessed(state.iterations() * 2 * static_cast<std::int64_t>(kPlaneBytes));
}

// A 16-byte message each way between two threads over a Unix socket.
void SocketPingPong(benchmark::State& state) {
    int fds[2];
    socketpair(AF_UNIX, SOCK_STREAM, 0, fds);
    std::jthread peer([fd = fds[1]] {
        std::uint8_t message[16];
        while (ReceiveAll(fd, message, sizeof message)) {
            SendAll(fd, message, sizeof message);
        }
    });
    std::uint8_t message[16] = {1, 2, 3};
    for (auto _ : state) {
        SendAll(fds[0], message, sizeof message);
        ReceiveAll(fds[0], message, sizeof message);
    }
    shutdown(fds[0], SHUT_RDWR);
    peer.join();
    close(fds[0]);
    close(fds[1]);
}

BENCHMARK(PlaneRoundTrip)->Name("plane_roundtrip_1080p")->UseRealTime();
BENCHMARK(SocketEcho)->Name("socket_echo_1080p")->UseRealTime();
BENCHMARK(EmptyCall)->Name("empty_call_roundtrip")->UseRealTime();
BENCHMARK(SocketPingPong)->Name("socket_pingpong_16")->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    wib::bench::RegisterFigure("plane_roundtrip_1080p", "plane_roundtrip_1080p",
                               "socket_echo_1080p", 0.7);
    wib::bench::RegisterFigure("empty_call_roundtrip", "empty_call_roundtrip", "socket_pingpong_16",
                               0.5);
    return wib::bench::RunAndReport(argc, argv);
}
