// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <fstream>
#include <span>
#include <string>
#include <vector>

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

class FileSink : public ByteSink {
  public:
    explicit FileSink(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {}
    bool isOpen() const { return file_.is_open(); }
    bool write(std::span<const std::uint8_t> bytes) override {
        file_.write(reinterpret_cast<const char*>(bytes.data()),
                    static_cast<std::streamsize>(bytes.size()));
        return file_.good();
    }
    // Flushes and closes; false when the file could not be written whole.
    bool close() {
        file_.close();
        return !file_.fail();
    }

  private:
    std::ofstream file_;
};

}  // namespace wib
