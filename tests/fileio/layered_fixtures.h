// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/layered_picture.h"

namespace wib::testing {

// The value of pixel (x, y) of plane `plane` (0 red .. 3 alpha) of layer
// `layer` in frame `frame`: different for every plane, layer and frame.
std::uint8_t LayeredValue(int frame, int layer, int plane, int x, int y);

// A picture whose pixels are LayeredValue and whose spare column and row hold
// 0xEE, which no file may keep. Layers are named "layer 0", "layer 1", ...
LayeredPicture MakeLayeredPicture(int width, int height, int layers, int frames);

// Fails the test unless `read` has the properties and pixels of `written`
// and its spare column and row are 0.
void ExpectSamePicture(const LayeredPicture& read, const LayeredPicture& written);

// Byte surgery on a container file, computed without the program's own
// reader: the offset of the first byte of section `tag`'s contents (the
// sections walked from the header), and the checksum written again over
// the changed bytes.
std::size_t SectionAt(const std::vector<std::uint8_t>& file, const std::string& tag);
void PutU32At(std::vector<std::uint8_t>& file, std::size_t offset, std::uint32_t value);
void Reseal(std::vector<std::uint8_t>& file);
std::uint32_t Crc32(const std::uint8_t* bytes, std::size_t size);

}  // namespace wib::testing
