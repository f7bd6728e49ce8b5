// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace wib::fuzz {

// Reads `bytes` with `decode` as they are, and again with their last four
// bytes replaced by the checksum of the rest, so that mutated inputs also
// reach the section readers behind the checksum.
template <typename Decode>
void DecodeAsIsAndResealed(std::span<const std::uint8_t> bytes, Decode decode) {
    decode(bytes);
    if (bytes.size() < 4) {
        return;
    }
    std::vector<std::uint8_t> sealed(bytes.begin(), bytes.end());
    const std::size_t body = sealed.size() - 4;
    const auto crc = static_cast<std::uint32_t>(crc32(0L, sealed.data(), static_cast<uInt>(body)));
    for (std::size_t i = 0; i < 4; ++i) {
        sealed[body + i] = static_cast<std::uint8_t>(crc >> (8 * i));
    }
    decode(std::span<const std::uint8_t>(sealed));
}

}  // namespace wib::fuzz
