// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer entry point of the Targa reader: any bytes, read as a file into a
// small document. Headers larger than the fuzzer's memory allows are skipped;
// the reader's own size checks are tested elsewhere.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fileio/byte_source.h"
#include "fileio/targa_reader.h"
#include "tests/fuzz/fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> bytes(data, size);
    if (size >= wib::kTargaHeaderSize) {
        const auto header = wib::ParseTargaHeader(bytes.first<wib::kTargaHeaderSize>());
        if (!wib::fuzz::SmallEnough(header.width, header.height)) {
            return 0;
        }
    }
    wib::testing::TestHost& host = wib::fuzz::Host();
    wib::MemorySource source(bytes);
    wib::ReadTarga(host.workspace, source, wib::LoadTarget::Document,
                   wib::TargaRowOrder::BottomFirst, "fuzz.tga");
    wib::MemorySource again(bytes);
    wib::ReadTarga(host.workspace, again, wib::LoadTarget::Brush, wib::TargaRowOrder::TopFirst,
                   "fuzz.tga");
    return 0;
}
