// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer entry point of the OpenRaster reader: any bytes, read as a file
// from memory. Layers are held to a million pixels in all, which keeps the
// fuzzer within its memory; the limits themselves are tested elsewhere.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fileio/openraster.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wib::DecodeOpenRaster(std::span<const std::uint8_t>(data, size), 1LL << 20);
    return 0;
}
