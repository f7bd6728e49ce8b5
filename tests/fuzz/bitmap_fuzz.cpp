// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer entry point of the bitmap reader and of cDIB's packed bitmaps (the
// clipboard's form): any bytes, read as a whole file and as a packed bitmap.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fileio/bitmap_format.h"
#include "fileio/bitmap_reader.h"
#include "fileio/cdib.h"
#include "tests/fuzz/fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> bytes(data, size);
    wib::BitmapProblem problem = wib::BitmapProblem::NotBitmap;
    const auto file = wib::ParseBitmapFile(bytes, problem);
    const auto packed = wib::ParsePackedBitmap(bytes, problem);
    wib::testing::TestHost& host = wib::fuzz::Host();
    if (!file || wib::fuzz::SmallEnough(file->width, file->rows())) {
        wib::ReadBitmap(host.workspace, bytes, wib::LoadTarget::Document, "fuzz.bmp");
    }
    if (packed && wib::fuzz::SmallEnough(packed->width, packed->rows())) {
        wib::cDIB dib;
        if (dib.CreateFromPackedDIBPointer(data, size)) {
            dib.WriteToBuffs(host.workspace);
            wib::Plane r(dib.Width(), packed->rows()), g = r, b = r;
            dib.WriteToFrames(r, g, b);
        }
    }
    return 0;
}
