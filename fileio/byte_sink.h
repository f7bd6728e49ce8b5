// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/atomic_file.h"

namespace wib {

// Where an encoder puts a file's bytes, in order.
class ByteSink {
  public:
    virtual ~ByteSink() = default;
    // False once anything could not be written.
    virtual bool write(std::span<const std::uint8_t> bytes) = 0;
};

class MemorySink : public ByteSink {
  public:
    bool write(std::span<const std::uint8_t> bytes) override {
        this->bytes.insert(this->bytes.end(), bytes.begin(), bytes.end());
        return true;
    }
    std::vector<std::uint8_t> bytes;
};

// A file written whole or not at all: nothing replaces the file at `path`
// until `close` succeeds.
class FileSink : public ByteSink {
  public:
    explicit FileSink(const std::string& path) : file_(path) {}
    bool isOpen() const { return file_.ok(); }
    bool write(std::span<const std::uint8_t> bytes) override {
        return file_.write(bytes.data(), bytes.size());
    }
    // Flushes and puts the file in place; false when it could not be written
    // whole, the old file then being as it was.
    bool close() { return file_.commit(); }
    // The system's reason for the failure.
    const std::string& error() const { return file_.error(); }

  private:
    AtomicFile file_;
};

}  // namespace wib
