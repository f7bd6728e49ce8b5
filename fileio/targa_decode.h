// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/byte_source.h"
#include "fileio/image_planes.h"
#include "fileio/targa_header.h"

namespace wib {

// Decodes the pixels of an accepted Targa (TargaRefusal gave nothing) from
// `body`, the bytes that follow the header and its ID field, into the
// top-left width x height of `out`, whose planes must be at least that large.
// Types 2 and 10 fill the alpha plane only at 32 bits a pixel; types 1 and 3
// fill none. Damaged data never writes outside the image: RLE pixels past a
// row's end are dropped, palette offsets past the palette are dropped. Returns
// false when the data ended before the last row (the rows before it are in).
bool DecodeTarga(const TargaHeader& header, ByteSource& body, const ImagePlanes& out,
                 TargaRowOrder order, const ProgressReport& progress);

// The most bytes a type 10 body of this header can use: every pixel in a
// packet of its own.
std::uint64_t TargaRleBodyLimit(const TargaHeader& header);

}  // namespace wib
