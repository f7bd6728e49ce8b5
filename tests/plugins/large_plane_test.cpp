// SPDX-License-Identifier: GPL-3.0-or-later
// Planes far larger than a socket buffer cross the real socket. The client
// runs in the server's thread, so while the server writes an answer nobody
// reads it: the kernel takes what fits and the rest leaves in later writes.
// The planes are checked byte for byte against the document's memory.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "tests/plugins/server_fixture.h"

namespace wib::testing {
namespace {

// A 12 MB plane: more than the kernel takes in one write.
constexpr int kWidth = 4096;
constexpr int kHeight = 3072;
constexpr std::size_t kBytes = (kWidth + 1) * std::size_t{kHeight + 1};

// Differs between neighbours along rows and columns, so that a lost,
// repeated or shifted byte shows.
std::string Pattern(int seed) {
    std::string bytes(kBytes, '\0');
    for (int y = 0; y <= kHeight; ++y) {
        for (int x = 0; x <= kWidth; ++x) {
            bytes[static_cast<std::size_t>(y) * (kWidth + 1) + static_cast<std::size_t>(x)] =
                static_cast<char>(x * 7 + y * 31 + ((x * y) >> 4) + seed);
        }
    }
    return bytes;
}

// The first index at which the two differ; -1 when they are equal.
long long FirstDifference(const char* got, const std::string& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (got[i] != expected[i]) {
            return static_cast<long long>(i);
        }
    }
    return -1;
}

class LargePlane : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        host.setUndoBudget(256);
        host.newDocument(kWidth, kHeight);
        ASSERT_EQ(host.workspace.document.RBuffer.byteCount(), kBytes);
    }
};

TEST_F(LargePlane, AnAnswerSplitAcrossWritesArrivesWhole) {
    const std::string pattern = Pattern(0);
    std::memcpy(host.workspace.document.RBuffer.data(), pattern.data(), kBytes);
    const Response answer = connectedClient()->call("Wib_GetRBuffer");
    ASSERT_EQ(answer.errorCode, 0);
    const msgpack::object& plane = answer.result();
    ASSERT_EQ(plane.via.array.size, 3u);
    EXPECT_EQ(plane.via.array.ptr[0].as<int>(), kWidth);
    EXPECT_EQ(plane.via.array.ptr[1].as<int>(), kHeight);
    const msgpack::object_bin& bin = plane.via.array.ptr[2].via.bin;
    ASSERT_EQ(bin.size, kBytes);
    EXPECT_EQ(FirstDifference(bin.ptr, pattern), -1);
}

TEST_F(LargePlane, ARequestReadInManyPiecesIsStoredWhole) {
    const std::string pattern = Pattern(85);
    const Response answer =
        connectedClient()->call("Wib_SetGBuffer", PlaneParams(kWidth, kHeight, pattern));
    ASSERT_EQ(answer.errorCode, 0) << answer.errorMessage;
    EXPECT_EQ(FirstDifference(reinterpret_cast<const char*>(host.workspace.document.GBuffer.data()),
                              pattern),
              -1);
}

}  // namespace
}  // namespace wib::testing
