// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace wib {

// Where a decoder takes a file's bytes from, in order: a file on disk or a
// block of memory (the clipboard, a fuzzer's input, a benchmark).
class ByteSource {
  public:
    virtual ~ByteSource() = default;
    // The next `count` bytes, or fewer at the end of the data. The view stays
    // valid until the next call.
    virtual std::span<const std::uint8_t> next(std::size_t count) = 0;
    // Bytes left from here to the end.
    virtual std::uint64_t remaining() const = 0;
};

// Hands out views of memory that the caller keeps alive; nothing is copied.
class MemorySource : public ByteSource {
  public:
    explicit MemorySource(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::span<const std::uint8_t> next(std::size_t count) override;
    std::uint64_t remaining() const override { return bytes_.size() - position_; }

  private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
};

// Reads a file through one buffer that grows to the largest request.
class FileSource : public ByteSource {
  public:
    explicit FileSource(const std::string& path);
    bool isOpen() const { return file_.is_open(); }
    std::span<const std::uint8_t> next(std::size_t count) override;
    std::uint64_t remaining() const override { return size_ - position_; }

  private:
    std::ifstream file_;
    std::uint64_t size_ = 0;
    std::uint64_t position_ = 0;
    std::unique_ptr<std::uint8_t[]> buffer_;
    std::size_t capacity_ = 0;
};

// Reads a whole file into memory; false when it cannot be opened or read.
bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes);

}  // namespace wib
