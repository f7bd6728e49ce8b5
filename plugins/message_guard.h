// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "plugins/wire_limits.h"

namespace wib {

// Walks the headers of a msgpack byte stream as its bytes arrive and refuses a
// message whose declared sizes break the limits, before the decoder buffers or
// allocates anything for it. String and binary payloads are skipped unread, so
// checking costs next to nothing per byte. Extension types and the unused
// byte 0xc1 are refused: the protocol has no use for them.
class MessageGuard {
  public:
    explicit MessageGuard(const WireLimits& limits) : MessageGuard(limits, limits) {}
    // The first message of a stream is held to `first`, every later one to `rest`.
    MessageGuard(const WireLimits& first, const WireLimits& rest) : first_(first), rest_(rest) {}

    // Checks the next bytes of the stream. False when they break a limit or are
    // not msgpack; problem() then says why, and the stream cannot go on.
    bool check(const std::uint8_t* data, std::size_t size);

    // Like check(), but stops right after the header of a binary of at least
    // `minBinary` bytes (in the five-byte form, which every binary of 64 KiB
    // or more has) and returns how many bytes it took; the binary's
    // length is then in longBinary() until the next call. The binary's bytes
    // still go through check() (or this) afterwards, which only counts them.
    std::size_t checkUpToLongBinary(const std::uint8_t* data, std::size_t size,
                                    std::size_t minBinary);
    std::uint64_t longBinary() const { return longBinary_; }

    const std::string& problem() const { return problem_; }
    // Whole top-level messages seen so far.
    std::size_t completeMessages() const { return messages_; }

  private:
    bool startValue();
    bool startPayload(std::uint64_t length, std::size_t limit, const char* what);
    bool openContainer(std::uint64_t items, std::uint64_t values);
    void closeValue();
    bool fail(std::string problem);
    const WireLimits& limits() const { return messages_ == 0 ? first_ : rest_; }

    WireLimits first_;
    WireLimits rest_;
    std::uint8_t head_[9] = {};  // the header of the value being read
    std::size_t headHave_ = 0;
    std::size_t headNeed_ = 0;
    std::uint64_t skip_ = 0;            // payload bytes still to pass
    std::size_t minBinary_ = SIZE_MAX;  // binaries that stop checkUpToLongBinary()
    std::uint64_t longBinary_ = 0;
    std::vector<std::uint64_t> open_;  // values still due in each open container
    std::uint64_t messageBytes_ = 0;   // of the current message, payloads declared so far
    std::uint64_t values_ = 0;         // of the current message
    std::size_t messages_ = 0;
    std::string problem_;
};

}  // namespace wib
