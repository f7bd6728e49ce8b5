// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/crc32.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdint>
#include <random>
#include <vector>

namespace wib {
namespace {

std::uint32_t ZlibCrc(std::uint32_t crc, const std::uint8_t* data, std::size_t size) {
    return static_cast<std::uint32_t>(crc32(crc, data, static_cast<uInt>(size)));
}

TEST(Crc32, KnownValues) {
    const std::vector<std::uint8_t> digits{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(Crc32(0, digits), 0xCBF43926u);
    EXPECT_EQ(Crc32(0, {}), 0u);
    // A thousand zero bytes and a thousand 0xFF bytes, as Python's zlib
    // module gives them.
    EXPECT_EQ(Crc32(0, std::vector<std::uint8_t>(1000, 0)), 0x060B1780u);
    EXPECT_EQ(Crc32(0, std::vector<std::uint8_t>(1000, 0xFF)), 0xE0533230u);
}

TEST(Crc32, AgreesWithZlibAtEveryLengthOffsetAndStartingValue) {
    std::mt19937 random(7);
    std::vector<std::uint8_t> bytes(1 << 16);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    int wrong = 0;
    for (std::size_t size = 0; size < 300; ++size) {
        for (std::size_t offset = 0; offset < 4; ++offset) {
            const std::uint32_t start = static_cast<std::uint32_t>(random());
            const std::uint8_t* data = bytes.data() + offset;
            wrong += Crc32(start, std::span(data, size)) != ZlibCrc(start, data, size);
        }
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(Crc32(0, bytes), ZlibCrc(0, bytes.data(), bytes.size()));
    // Continuing from the first part's checksum gives the whole run's.
    const std::uint32_t first = Crc32(0, std::span(bytes).first(1000));
    EXPECT_EQ(Crc32(first, std::span(bytes).subspan(1000)), Crc32(0, bytes));
}

}  // namespace
}  // namespace wib
