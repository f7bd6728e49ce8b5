// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/targa_header.h"

#include "fileio/file_messages.h"

namespace wib {

namespace {

std::uint16_t Word(std::span<const std::uint8_t, kTargaHeaderSize> bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8));
}

void PutWord(std::span<std::uint8_t, kTargaHeaderSize> bytes, std::size_t at, std::uint16_t value) {
    bytes[at] = static_cast<std::uint8_t>(value & 0xFF);
    bytes[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

}  // namespace

TargaHeader ParseTargaHeader(std::span<const std::uint8_t, kTargaHeaderSize> bytes) {
    TargaHeader header;
    header.idLength = bytes[0];
    header.colorMapType = bytes[1];
    header.imageType = bytes[2];
    header.colorMapFirstEntry = Word(bytes, 3);
    header.colorMapLength = Word(bytes, 5);
    header.colorMapEntrySize = bytes[7];
    header.xOrigin = Word(bytes, 8);
    header.yOrigin = Word(bytes, 10);
    header.width = Word(bytes, 12);
    header.height = Word(bytes, 14);
    header.pixelDepth = bytes[16];
    header.descriptor = bytes[17];
    return header;
}

void WriteTargaHeader(const TargaHeader& header, std::span<std::uint8_t, kTargaHeaderSize> bytes) {
    bytes[0] = header.idLength;
    bytes[1] = header.colorMapType;
    bytes[2] = header.imageType;
    PutWord(bytes, 3, header.colorMapFirstEntry);
    PutWord(bytes, 5, header.colorMapLength);
    bytes[7] = header.colorMapEntrySize;
    PutWord(bytes, 8, header.xOrigin);
    PutWord(bytes, 10, header.yOrigin);
    PutWord(bytes, 12, header.width);
    PutWord(bytes, 14, header.height);
    bytes[16] = header.pixelDepth;
    bytes[17] = header.descriptor;
}

std::optional<std::string> TargaRefusal(const TargaHeader& header) {
    auto depthRefusal = [&header]() -> std::optional<std::string> {
        return std::to_string(header.pixelDepth) + kTargaDepthUnsupported;
    };
    switch (header.imageType) {
        case kTargaNone:
            return kTargaNoImageMessage;
        case kTargaColorMappedRle:
            return kTargaColorMappedRleMessage;
        case kTargaGreyscaleRle:
            return kTargaGreyscaleRleMessage;
        case kTargaColorMapped:
        case kTargaGreyscale:
            return header.pixelDepth == 8 ? std::nullopt : depthRefusal();
        case kTargaTrueColor:
        case kTargaTrueColorRle:
            return header.pixelDepth == 24 || header.pixelDepth == 32 ? std::nullopt
                                                                      : depthRefusal();
        default:
            return kCorruptFileMessage;
    }
}

}  // namespace wib
