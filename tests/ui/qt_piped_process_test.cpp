// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "ui/host/qt_process_runner.h"

namespace wib {
namespace {

TEST(QtPipedProcess, BytesGoInAndComeBackOutWhole) {
    QtProcessRunner runner;
    const auto cat = runner.startPiped("cat", {});
    ASSERT_NE(cat, nullptr);
    // More than a pipe holds, so that writing has to wait for the reader.
    std::vector<std::uint8_t> sent(3 << 20);
    std::iota(sent.begin(), sent.end(), std::uint8_t{0});
    std::vector<std::uint8_t> received(sent.size());
    std::size_t got = 0;
    // cat echoes as it goes; reading after each slice keeps both pipes moving.
    constexpr std::size_t kSlice = 1 << 15;
    for (std::size_t sentSoFar = 0; sentSoFar < sent.size(); sentSoFar += kSlice) {
        ASSERT_TRUE(cat->write(sent.data() + sentSoFar, kSlice));
        while (got < sentSoFar + kSlice) {
            const std::size_t read = cat->read(received.data() + got, received.size() - got);
            ASSERT_GT(read, 0u);
            got += read;
        }
    }
    EXPECT_EQ(received, sent);
    const ProcessEnd end = cat->finish();
    EXPECT_EQ(end.exitCode, 0);
}

TEST(QtPipedProcess, AFailureKeepsItsExitCodeAndLastErrorLine) {
    QtProcessRunner runner;
    const auto failing =
        runner.startPiped("sh", {"-c", "echo first >&2; echo 'the last words' >&2; exit 3"});
    ASSERT_NE(failing, nullptr);
    std::uint8_t byte = 0;
    EXPECT_EQ(failing->read(&byte, 1), 0u);
    const ProcessEnd end = failing->finish();
    EXPECT_EQ(end.exitCode, 3);
    EXPECT_EQ(end.lastErrorLine, "the last words");
}

TEST(QtPipedProcess, AMissingProgramStartsNothing) {
    QtProcessRunner runner;
    EXPECT_EQ(runner.startPiped("wib-no-such-program", {}), nullptr);
}

}  // namespace
}  // namespace wib
