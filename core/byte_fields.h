// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// Little-endian fields of the program's own binary files: numbers of 1 to 8
// bytes, IEEE floats by their bits, and texts as a 32-bit length and UTF-8.

namespace wib {

template <typename T>
void PutLittleEndian(std::vector<std::uint8_t>& out, T value, std::size_t size = sizeof(T)) {
    for (std::size_t i = 0; i < size; ++i) {
        out.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i)));
    }
}

inline void PutU8(std::vector<std::uint8_t>& out, std::uint8_t value) {
    out.push_back(value);
}
inline void PutU32(std::vector<std::uint8_t>& out, std::uint32_t value) {
    PutLittleEndian(out, value);
}
inline void PutU64(std::vector<std::uint8_t>& out, std::uint64_t value) {
    PutLittleEndian(out, value);
}
inline void PutF32(std::vector<std::uint8_t>& out, float value) {
    PutU32(out, std::bit_cast<std::uint32_t>(value));
}
inline void PutF64(std::vector<std::uint8_t>& out, double value) {
    PutU64(out, std::bit_cast<std::uint64_t>(value));
}
inline void PutText(std::vector<std::uint8_t>& out, const std::string& text) {
    PutU32(out, static_cast<std::uint32_t>(text.size()));
    out.insert(out.end(), text.begin(), text.end());
}

// Reads the fields above in order, refusing to run past the end: a read that
// does not fit returns false and leaves the position where it was.
class ByteFieldReader {
  public:
    explicit ByteFieldReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool u8(std::uint8_t& value) { return unsigned_(value, 1); }
    bool u32(std::uint32_t& value) { return unsigned_(value, 4); }
    bool u64(std::uint64_t& value) { return unsigned_(value, 8); }
    bool f32(float& value) {
        std::uint32_t bits = 0;
        return u32(bits) && (value = std::bit_cast<float>(bits), true);
    }
    bool f64(double& value) {
        std::uint64_t bits = 0;
        return u64(bits) && (value = std::bit_cast<double>(bits), true);
    }
    bool text(std::string& value) {
        std::uint32_t size = 0;
        if (!u32(size)) {
            return false;
        }
        if (size > left()) {
            at_ -= 4;
            return false;
        }
        value.assign(reinterpret_cast<const char*>(bytes_.data() + at_), size);
        at_ += size;
        return true;
    }
    // The next `size` bytes; the caller has checked that they are there.
    std::span<const std::uint8_t> take(std::size_t size) {
        const auto part = bytes_.subspan(at_, size);
        at_ += size;
        return part;
    }
    std::size_t left() const { return bytes_.size() - at_; }
    std::size_t position() const { return at_; }

  private:
    template <typename T>
    bool unsigned_(T& value, std::size_t size) {
        if (left() < size) {
            return false;
        }
        value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            value |= static_cast<T>(static_cast<T>(bytes_[at_ + i]) << (8 * i));
        }
        at_ += size;
        return true;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
};

}  // namespace wib
