// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "fileio/image_load.h"

namespace wib {

class Workspace;

// Reads an uncompressed bitmap of 8, 24 or 32 bits a pixel into the document,
// which takes the bitmap's size when it differs. A file that is not a bitmap
// gives "Not a BMP", another depth "Currently loads only 8 and 24 bit files"
// and a compressed one "Compression not currently supported."; each leaves the
// document as it was.
bool LoadBMP(Workspace& workspace, const std::string& path);

// The same into the brush buffer, which becomes the custom brush.
bool LoadBMPToBrush(Workspace& workspace, const std::string& path);

// The reader itself, over the bytes of a whole file.
bool ReadBitmap(Workspace& workspace, std::span<const std::uint8_t> bytes, LoadTarget target,
                const std::string& name);

// Writes the document as a 24-bit bitmap, and the brush as a 32-bit one with
// its alpha. A file that cannot be written gets a message.
bool SaveBMP(Workspace& workspace, const std::string& path);
bool SaveBrushToBMP(Workspace& workspace, const std::string& path);

}  // namespace wib
