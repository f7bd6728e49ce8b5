// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/container.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "core/byte_fields.h"
#include "core/document_limits.h"
#include "fileio/crc32.h"
#include "fileio/file_messages.h"
#include "fileio/layered_messages.h"
#include "fileio/parallel_jobs.h"

namespace wib {

namespace {

// The share of one thread of a large run's checksum.
constexpr std::size_t kChecksumChunk = std::size_t{1} << 24;

std::uint32_t ChecksumOfChunk(std::span<const std::uint8_t> bytes) {
    return Crc32(0, bytes);
}

std::uint32_t Combine(std::uint32_t first, std::uint32_t second, std::size_t secondSize) {
    return static_cast<std::uint32_t>(
        crc32_combine(first, second, static_cast<z_off_t>(secondSize)));
}

void PutFourCC(std::vector<std::uint8_t>& out, FourCC code) {
    out.insert(out.end(), code.begin(), code.end());
}

FourCC FourCCAt(std::span<const std::uint8_t> bytes) {
    FourCC code;
    std::memcpy(code.data(), bytes.data(), code.size());
    return code;
}

}  // namespace

std::uint32_t ChecksumOf(std::span<const std::uint8_t> bytes) {
    const std::size_t chunks = (bytes.size() + kChecksumChunk - 1) / kChecksumChunk;
    if (chunks <= 1) {
        return ChecksumOfChunk(bytes);
    }
    std::vector<std::uint32_t> crcs(chunks);
    RunJobs(chunks, [&](std::size_t i) {
        crcs[i] = ChecksumOfChunk(bytes.subspan(
            i * kChecksumChunk, std::min(kChecksumChunk, bytes.size() - i * kChecksumChunk)));
    });
    std::uint32_t crc = crcs[0];
    for (std::size_t i = 1; i < chunks; ++i) {
        crc = Combine(crc, crcs[i], std::min(kChecksumChunk, bytes.size() - i * kChecksumChunk));
    }
    return crc;
}

ContainerWriter::ContainerWriter(ByteSink& sink, FourCC magic, int width, int height)
    : sink_(sink) {
    std::vector<std::uint8_t> header;
    PutFourCC(header, magic);
    PutU32(header, kContainerVersion);
    PutU32(header, static_cast<std::uint32_t>(width));
    PutU32(header, static_cast<std::uint32_t>(height));
    put(header);
}

void ContainerWriter::section(FourCC tag, std::span<const std::uint8_t> bytes) {
    const ContainerPiece piece{bytes, ChecksumOf(bytes)};
    section(tag, std::span(&piece, 1));
}

void ContainerWriter::section(FourCC tag, std::span<const ContainerPiece> pieces) {
    std::uint64_t length = 0;
    for (const ContainerPiece& piece : pieces) {
        length += piece.bytes.size();
    }
    std::vector<std::uint8_t> header;
    PutFourCC(header, tag);
    PutU64(header, length);
    put(header);
    for (const ContainerPiece& piece : pieces) {
        put(piece.bytes, piece.crc);
    }
}

void ContainerWriter::put(std::span<const std::uint8_t> bytes, std::uint32_t crc) {
    crc_ = Combine(crc_, crc, bytes.size());
    ok_ = ok_ && sink_.write(bytes);
}

bool ContainerWriter::finish() {
    std::vector<std::uint8_t> trailer;
    PutU32(trailer, crc_);
    return sink_.write(trailer) && ok_;
}

std::optional<std::string> WriteContainerFile(const std::string& path, FourCC magic, int width,
                                              int height,
                                              const std::function<void(ContainerWriter&)>& fill) {
    FileSink sink(path);
    if (sink.isOpen()) {
        ContainerWriter container(sink, magic, width, height);
        fill(container);
        if (container.finish() && sink.close()) {
            return std::nullopt;
        }
    }
    return CannotWriteMessage(path, sink.error());
}

std::optional<std::span<const std::uint8_t>> Container::section(FourCC tag) const {
    const auto found = sectionsTagged(tag);
    if (found.size() != 1) {
        return std::nullopt;
    }
    return found.front();
}

std::vector<std::span<const std::uint8_t>> Container::sectionsTagged(FourCC tag) const {
    std::vector<std::span<const std::uint8_t>> found;
    for (const auto& [sectionTag, bytes] : sections) {
        if (sectionTag == tag) {
            found.push_back(bytes);
        }
    }
    return found;
}

ReadResult<Container> ParseContainer(std::span<const std::uint8_t> bytes, FourCC magic,
                                     const char* wrongType) {
    using Result = ReadResult<Container>;
    if (bytes.size() < magic.size() || FourCCAt(bytes) != magic) {
        return Result::Failed(wrongType);
    }
    if (bytes.size() < kContainerHeaderSize + kChecksumSize) {
        return Result::Failed(kContainerTruncated);
    }
    ByteFieldReader header(bytes.subspan(magic.size(), kContainerHeaderSize - magic.size()));
    std::uint32_t version = 0, width = 0, height = 0;
    header.u32(version);
    header.u32(width);
    header.u32(height);
    if (version != kContainerVersion) {
        return Result::Failed(kContainerNewerVersion);
    }
    constexpr auto kLargest = static_cast<std::uint32_t>(kMaxDocumentSide);
    if (width < 1 || height < 1 || width > kLargest || height > kLargest) {
        return Result::Failed(DocumentSizeLimitMessage());
    }
    Container container{static_cast<int>(width), static_cast<int>(height), {}};
    const auto body =
        bytes.subspan(kContainerHeaderSize, bytes.size() - kContainerHeaderSize - kChecksumSize);
    ByteFieldReader reader(body);
    while (reader.left() > 0) {
        std::uint64_t length = 0;
        if (reader.left() < kSectionHeaderSize) {
            return Result::Failed(kContainerTruncated);
        }
        const FourCC tag = FourCCAt(reader.take(4));
        reader.u64(length);
        if (length > reader.left()) {
            return Result::Failed(kContainerTruncated);
        }
        container.sections.emplace_back(tag, reader.take(static_cast<std::size_t>(length)));
    }
    ByteFieldReader trailer(bytes.last(kChecksumSize));
    std::uint32_t stored = 0;
    trailer.u32(stored);
    if (ChecksumOf(bytes.first(bytes.size() - kChecksumSize)) != stored) {
        return Result::Failed(kContainerChecksum);
    }
    return {std::move(container), {}};
}

}  // namespace wib
