// SPDX-License-Identifier: GPL-3.0-or-later
// The C++ client against a running server program, end to end.

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <thread>

#include "plugins/sdk/cpp/wibbleton_client.h"
#include "tests/plugins/server_process.h"

namespace wib::testing {
namespace {

using wibbleton::Plane;
using wibbleton::Wibbleton_Class;
using wibbleton::WibbletonError;

class CppClient : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { server_ = new ServerProcess(WIB_AUTOMATION_SERVER); }
    static void TearDownTestSuite() {
        delete server_;
        server_ = nullptr;
    }

    void SetUp() override {
        wib = std::make_unique<Wibbleton_Class>(server_->socketPath(), server_->token());
        wib->Wib_HardUnlock();
        wib->Wib_NewBuffer(64, 48);
    }

    static int ErrorCode(const std::function<void()>& call) {
        try {
            call();
        } catch (const WibbletonError& error) {
            return error.code;
        }
        return 0;
    }

    static ServerProcess* server_;
    std::unique_ptr<Wibbleton_Class> wib;
};

ServerProcess* CppClient::server_ = nullptr;

// Bigger than the socket buffers on both sides: the client sends in several
// writes and reads in several reads. A plane follows its frame number.
TEST_F(CppClient, PlanesOfEverySizeCrossWhole) {
    constexpr int kWidth = 4096;
    constexpr int kHeight = 3072;
    wib->Wib_NewBuffer(kWidth, kHeight);
    Plane red(kWidth, kHeight);
    for (std::size_t i = 0; i < red.data.size(); ++i) {
        red.data[i] = static_cast<std::uint8_t>(i * 7 + i / 4097);
    }
    wib->Wib_SetRbuffer(red);
    // Single pixels travel in answers too small to split.
    EXPECT_EQ(wib->Wib_GetR(kWidth, kHeight), red.at(kWidth, kHeight));
    EXPECT_EQ(wib->Wib_GetR(17, 2500), red.at(17, 2500));
    EXPECT_TRUE(wib->Wib_GetRBuffer().data == red.data);

    wib->Wib_NewBuffer(64, 48);
    wib->Wib_CreateAnimAdv(2, 3);
    Plane green(64, 48);
    green.at(5, 6) = 77;
    wib->Wib_SetGFrame(green, 1);
    EXPECT_EQ(wib->Wib_GetGFrame(1).data, green.data);
    EXPECT_EQ(wib->Wib_GetGFrame(0).at(5, 6), 255);
    wib->Wib_FreeAnim();
}

TEST_F(CppClient, AnswersArriveTyped) {
    Plane alpha(64, 48, 0);
    alpha.at(10, 5) = 200;
    alpha.at(20, 9) = 1;
    wib->Wib_SetABuffer(alpha);
    EXPECT_EQ(wib->Wib_GetAlphaBounds(), (std::array<int, 4>{10, 5, 20, 9}));
    EXPECT_FALSE(wib->Wib_GetBrushRBuffer().has_value());
    EXPECT_EQ(wib->Wib_NewFilename("take0009.tga"), "take0010.tga");
    EXPECT_EQ(wib->Wib_MessageBox("Done"), 1);  // the title is optional

    const auto commands = wib->Wib_ListCommands();
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [](const auto& c) { return c.id == "image.canvas_size"; });
    ASSERT_NE(found, commands.end());
    EXPECT_EQ(found->params[0].name, "width");
    EXPECT_EQ(std::get<long long>(found->params[0].initial), 64);
    EXPECT_TRUE(wib->Wib_RunCommand("image.canvas_size", {{"width", 100LL}, {"anchor", 0LL}}));
    EXPECT_EQ(wib->Wib_BufferWidth(), 100);
    // -1 and 0 come back as true and false.
    wib->Wib_SaveUndo();
    wib->Wib_ClearBuffer(0, 0, 0);
    EXPECT_TRUE(wib->Wib_RunCommand("edit.undo"));
    EXPECT_TRUE(wib->Wib_RunCommand("edit.redo"));
    EXPECT_FALSE(wib->Wib_RunCommand("edit.redo"));
}

TEST_F(CppClient, IntegerListsGoBothWays) {
    const auto commands = wib->Wib_ListCommands();
    const auto convolve = std::find_if(commands.begin(), commands.end(),
                                       [](const auto& c) { return c.id == "filter.convolve"; });
    ASSERT_NE(convolve, commands.end());
    EXPECT_EQ(convolve->params[0].type, "integer list");
    EXPECT_EQ(std::get<std::vector<long long>>(convolve->params[0].initial).size(), 9u);
    wib->Wib_ClearBuffer(40, 40, 40);
    EXPECT_TRUE(wib->Wib_RunCommand(
        "filter.convolve", {{"kernel", std::vector<long long>{0, 0, 0, 0, 3, 0, 0, 0, 0}}}));
    EXPECT_EQ(wib->Wib_GetRGB(3, 3), 120 + 256 * 120 + 65536 * 120);
}

TEST_F(CppClient, IntegerArraysAndFormsArriveTyped) {
    wib->GS_SetTempArray({});
    EXPECT_TRUE(wib->GS_SetTempArray({4, -5, 6}).empty());
    EXPECT_EQ(wib->GS_SetTempArray({}), (std::vector<int>{4, -5, 6}));
    wib->Wib_BrushDown(3, 4);
    wib->Wib_BrushMove(9, 4);
    EXPECT_EQ(wib->GS_GetCurvepoints(), (std::vector<int>{3, 4, 9, 4}));
    // Headless, a form answers its starting values.
    const auto values = wib->Wib_SendFormObject("Sparks", {{"count", 3LL}, {"label", "hot"}});
    EXPECT_EQ(std::get<long long>(values.at("count")), 3);
    EXPECT_EQ(std::get<std::string>(values.at("label")), "hot");
}

TEST_F(CppClient, RefusedCallsCarryTheProgramsCodes) {
    EXPECT_EQ(ErrorCode([&] { wib->Wib_GetRGB(65, 0); }), 9);
    EXPECT_EQ(ErrorCode([&] { wib->Wib_SetRGB(0, 0, 300, 0, 0); }), 5);
    EXPECT_EQ(ErrorCode([&] { wib->call("Wib_Teleport"); }), 438);
    EXPECT_EQ(ErrorCode([&] { Wibbleton_Class(server_->socketPath(), "wrong"); }), 70);
    // The connection goes on after a refused call.
    wib->Wib_SetRGB(64, 48, 1, 2, 3);
    EXPECT_EQ(wib->Wib_GetB(64, 48), 3);
}

}  // namespace
}  // namespace wib::testing

namespace wib::testing {
namespace {

// A peer that answers two requests, each preceded by a notification.
TEST(CppClientAlone, NotificationsWaitInEventsUntilTaken) {
    char folder[] = "/tmp/wib-peer-XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const std::string path = std::string(folder) + "/peer.sock";
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listener, 1), 0);

    std::thread peer([listener] {
        const int connection = accept(listener, nullptr, nullptr);
        msgpack::unpacker requests;
        for (std::uint32_t msgid = 1; msgid <= 2; ++msgid) {
            msgpack::object_handle request;
            while (!requests.next(request)) {
                requests.reserve_buffer(4096);
                const ssize_t got = read(connection, requests.buffer(), 4096);
                if (got <= 0) {
                    close(connection);
                    return;
                }
                requests.buffer_consumed(static_cast<std::size_t>(got));
            }
            msgpack::sbuffer out;
            msgpack::packer<msgpack::sbuffer> packer(out);
            packer.pack(
                std::make_tuple(2, std::string("WibMouseDown"), std::vector<int>{1, 0, 10, 20}));
            packer.pack(std::make_tuple(1, msgid, msgpack::type::nil_t(), -1));
            [[maybe_unused]] const ssize_t sent = write(connection, out.data(), out.size());
        }
        close(connection);
    });

    {
        Wibbleton_Class wib(path, "any");
        EXPECT_EQ(wib.call("Wib_Anything")->as<int>(), -1);
        std::deque<wibbleton::Event> events = wib.events();
        ASSERT_EQ(events.size(), 2u);
        EXPECT_EQ(events[0].method, "WibMouseDown");
        EXPECT_EQ(events[1].params->as<std::vector<int>>(), (std::vector<int>{1, 0, 10, 20}));
        EXPECT_TRUE(wib.events().empty());
    }
    peer.join();
    close(listener);
    unlink(path.c_str());
    rmdir(folder);
}

}  // namespace
}  // namespace wib::testing
