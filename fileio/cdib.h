// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/plane.h"
#include "fileio/bitmap_format.h"

namespace wib {

class Prompter;
class Workspace;

// One Windows bitmap of 8, 24 or 32 bits a pixel, uncompressed, read from a
// file or from a packed bitmap (the form the clipboard hands over), held in
// memory the object owns. Its header fields are read-only properties.
class cDIB {
  public:
    // Refuses a missing file with "File does not exist:", one that cannot be
    // opened with "File is locked - cannot access:" and one that is not a
    // bitmap it can hold with "File is not a supported bitmap format:", each
    // followed by the name. The object keeps what it held before a refusal.
    bool CreateFromFile(Prompter& prompter, const std::string& path);
    // `size` bytes of info header, palette and bits; false, silently, when
    // they do not make a bitmap it can hold.
    bool CreateFromPackedDIBPointer(const std::uint8_t* packed, std::size_t size);

    // Copies the bitmap into the main buffer (alpha too at 32 bits), taking
    // its size when that differs, as a file that is opened. False when there
    // is nothing to copy or the bits are cut short (said in a message).
    bool WriteToBuffs(Workspace& workspace) const;
    // Copies the bitmap into the colour planes of one animation frame, which
    // must be at least the bitmap's size; false when they are not.
    bool WriteToFrames(Plane& r, Plane& g, Plane& b) const;

    bool empty() const { return memory_.empty(); }

    int BitCount() const { return info_.bitCount; }
    int Height() const { return info_.height; }
    int Width() const { return info_.width; }
    int Compression() const { return static_cast<int>(info_.compression); }
    int SizeInfoHeader() const { return static_cast<int>(info_.sizeInfoHeader); }
    int SizeImage() const { return static_cast<int>(info_.sizeImage); }
    int PLANES() const { return info_.planes; }
    int ClrImportant() const { return static_cast<int>(info_.clrImportant); }
    int ClrUsed() const { return static_cast<int>(info_.clrUsed); }
    int XPPM() const { return info_.xPelsPerMeter; }
    int YPPM() const { return info_.yPelsPerMeter; }
    // The two signature bytes ("BM") as a little-endian word; 0 for a packed bitmap.
    int filetype() const { return info_.fileType; }
    int SizeFileHeader() const { return info_.fileType != 0 ? kBitmapFileHeaderSize : 0; }
    int BitOffset() const { return static_cast<int>(info_.bitOffset); }
    const std::uint8_t* PointerToBits() const;
    const std::uint8_t* PointerToBitmapInfo() const;
    int SizeBitmapInfo() const;

  private:
    std::vector<std::uint8_t> memory_;
    BitmapInfo info_;
};

}  // namespace wib
