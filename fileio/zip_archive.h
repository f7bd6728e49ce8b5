// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

struct zip;
struct zip_source;

namespace wib {

// A zip archive built in memory, entries in the order they are added.
class ZipBuilder {
  public:
    ZipBuilder();
    ~ZipBuilder();
    ZipBuilder(const ZipBuilder&) = delete;
    ZipBuilder& operator=(const ZipBuilder&) = delete;

    // Adds an entry holding a copy of `bytes`, deflated or stored as is (for
    // data that is compressed already or must be readable in place).
    enum class Method { Store, Deflate };
    bool add(const std::string& name, std::span<const std::uint8_t> bytes, Method method);
    // The finished archive; nothing when anything failed. Ends the builder.
    std::optional<std::vector<std::uint8_t>> finish();

  private:
    zip_source* buffer_ = nullptr;
    zip* archive_ = nullptr;
    bool failed_ = false;
};

// A zip archive read from bytes in memory, which must outlive it.
class ZipReader {
  public:
    // Nothing when the bytes are not a readable archive.
    static std::optional<ZipReader> Open(std::span<const std::uint8_t> bytes);
    ~ZipReader();
    ZipReader(ZipReader&& other) noexcept;
    ZipReader& operator=(ZipReader&&) = delete;
    ZipReader(const ZipReader&) = delete;
    ZipReader& operator=(const ZipReader&) = delete;

    bool contains(const std::string& name) const;
    // The whole of an entry; nothing when it is missing, damaged or longer
    // than `maxBytes` (the sizes in an archive are not trusted: the entry is
    // read in pieces up to the limit).
    std::optional<std::vector<std::uint8_t>> read(const std::string& name,
                                                  std::size_t maxBytes) const;

  private:
    explicit ZipReader(zip* archive) : archive_(archive) {}
    zip* archive_;
};

}  // namespace wib
