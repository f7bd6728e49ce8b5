// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace wib {

// The CRC-32 of zlib and gzip, continued from `crc` (0 to start) over
// `bytes`: the same number zlib's crc32 gives, folded with carry-less
// multiplication where the processor has it, many times faster on large runs.
std::uint32_t Crc32(std::uint32_t crc, std::span<const std::uint8_t> bytes);

}  // namespace wib
