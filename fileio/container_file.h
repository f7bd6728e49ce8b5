// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "fileio/byte_source.h"
#include "fileio/container.h"
#include "fileio/file_messages.h"
#include "fileio/layered_messages.h"
#include "fileio/read_result.h"

// The reading steps every container format shares: the container checked
// first, then the format's own sections; memory that cannot be had is a
// message like any other.

namespace wib {

template <typename T, typename ReadSections>
ReadResult<T> DecodeContainer(std::span<const std::uint8_t> bytes, FourCC magic,
                              const char* wrongType, ReadSections readSections) {
    try {
        const ReadResult<Container> container = ParseContainer(bytes, magic, wrongType);
        if (!container) {
            return ReadResult<T>::Failed(container.message);
        }
        return readSections(*container.value);
    } catch (const std::bad_alloc&) {
        return ReadResult<T>::Failed(kContainerNoMemory);
    }
}

template <typename T, typename Decode>
ReadResult<T> ReadContainerFile(const std::string& path, Decode decode) {
    std::vector<std::uint8_t> bytes;
    try {
        if (!ReadWholeFile(path, bytes)) {
            return ReadResult<T>::Failed(CannotOpenMessage(path));
        }
    } catch (const std::bad_alloc&) {
        return ReadResult<T>::Failed(kContainerNoMemory);
    }
    return decode(bytes);
}

}  // namespace wib
