// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer entry point of the layered picture reader: any bytes, read as a
// ".lyr" file as they are and with a checksum that matches.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fileio/layered_file.h"
#include "tests/fuzz/container_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wib::fuzz::DecodeAsIsAndResealed(
        std::span<const std::uint8_t>(data, size),
        [](std::span<const std::uint8_t> bytes) { return wib::DecodeLayered(bytes); });
    return 0;
}
