// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/zip_archive.h"

#include <zip.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace wib {

ZipBuilder::ZipBuilder() {
    zip_error_t error;
    zip_error_init(&error);
    buffer_ = zip_source_buffer_create(nullptr, 0, 0, &error);
    if (buffer_ != nullptr) {
        archive_ = zip_open_from_source(buffer_, ZIP_TRUNCATE, &error);
        if (archive_ == nullptr) {
            zip_source_free(buffer_);
            buffer_ = nullptr;
        } else {
            // Keeps the buffer alive past zip_close, which writes into it.
            zip_source_keep(buffer_);
        }
    }
    zip_error_fini(&error);
    failed_ = archive_ == nullptr;
}

ZipBuilder::~ZipBuilder() {
    if (archive_ != nullptr) {
        zip_discard(archive_);
    }
    if (buffer_ != nullptr) {
        zip_source_free(buffer_);
    }
}

bool ZipBuilder::add(const std::string& name, std::span<const std::uint8_t> bytes, Method method) {
    if (failed_) {
        return false;
    }
    // Copied into a buffer the archive owns, so the caller's may go at once.
    void* copy = std::malloc(bytes.empty() ? 1 : bytes.size());
    if (copy == nullptr) {
        failed_ = true;
        return false;
    }
    if (!bytes.empty()) {
        std::memcpy(copy, bytes.data(), bytes.size());
    }
    zip_source_t* source = zip_source_buffer(archive_, copy, bytes.size(), 1);
    if (source == nullptr) {
        std::free(copy);
        failed_ = true;
        return false;
    }
    const zip_int64_t index =
        zip_file_add(archive_, name.c_str(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        failed_ = true;
        return false;
    }
    const zip_int32_t compression = method == Method::Store ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
    if (zip_set_file_compression(archive_, static_cast<zip_uint64_t>(index), compression, 0) != 0) {
        failed_ = true;
    }
    return !failed_;
}

std::optional<std::vector<std::uint8_t>> ZipBuilder::finish() {
    if (failed_) {
        return std::nullopt;
    }
    const bool closed = zip_close(archive_) == 0;
    if (!closed) {
        return std::nullopt;  // the archive is discarded by the destructor
    }
    archive_ = nullptr;
    failed_ = true;  // the builder is used up
    if (zip_source_open(buffer_) != 0) {
        return std::nullopt;
    }
    std::optional<std::vector<std::uint8_t>> result;
    if (zip_source_seek(buffer_, 0, SEEK_END) == 0) {
        const zip_int64_t size = zip_source_tell(buffer_);
        std::vector<std::uint8_t> bytes(size > 0 ? static_cast<std::size_t>(size) : 0);
        if (size >= 0 && zip_source_seek(buffer_, 0, SEEK_SET) == 0 &&
            zip_source_read(buffer_, bytes.data(), bytes.size()) == size) {
            result = std::move(bytes);
        }
    }
    zip_source_close(buffer_);
    return result;
}

std::optional<ZipReader> ZipReader::Open(std::span<const std::uint8_t> bytes) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip* archive = nullptr;
    if (source != nullptr) {
        archive = zip_open_from_source(source, ZIP_RDONLY, &error);
        if (archive == nullptr) {
            zip_source_free(source);
        }
    }
    zip_error_fini(&error);
    if (archive == nullptr) {
        return std::nullopt;
    }
    return ZipReader(archive);
}

ZipReader::~ZipReader() {
    if (archive_ != nullptr) {
        zip_discard(archive_);
    }
}

ZipReader::ZipReader(ZipReader&& other) noexcept : archive_(other.archive_) {
    other.archive_ = nullptr;
}

bool ZipReader::contains(const std::string& name) const {
    return zip_name_locate(archive_, name.c_str(), 0) >= 0;
}

std::optional<std::vector<std::uint8_t>> ZipReader::read(const std::string& name,
                                                         std::size_t maxBytes) const {
    zip_file_t* file = zip_fopen(archive_, name.c_str(), 0);
    if (file == nullptr) {
        return std::nullopt;
    }
    constexpr std::size_t kPiece = 1 << 16;
    std::vector<std::uint8_t> bytes;
    bool ok = true;
    for (;;) {
        const std::size_t have = bytes.size();
        if (have > maxBytes) {
            ok = false;
            break;
        }
        bytes.resize(have + kPiece);
        const zip_int64_t got = zip_fread(file, bytes.data() + have, kPiece);
        if (got < 0) {
            ok = false;
            break;
        }
        bytes.resize(have + static_cast<std::size_t>(got));
        if (got == 0) {
            break;
        }
    }
    zip_fclose(file);
    if (!ok) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace wib
