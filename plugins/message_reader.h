// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstddef>
#include <deque>
#include <string>

#include "plugins/message_guard.h"
#include "plugins/plane_payload.h"
#include "plugins/wire_limits.h"

namespace wib {

// Turns a connection's byte stream into whole msgpack messages. Bytes are read
// straight into the decoder's buffer; the guard checks them there before the
// decoder sees them. The bytes of a long binary (a plane) are read straight
// into memory of their own instead (see PlanePayload), which the message
// hands on with it.
class MessageReader {
  public:
    // The first message is held to `first` (the greeting), all later ones to `rest`.
    MessageReader(const WireLimits& first, const WireLimits& rest);

    // How many bytes the next read should ask for.
    std::size_t wanted() const;
    // Room for `size` more bytes of the stream; fill it, then commit().
    char* reserve(std::size_t size);
    // Checks the `size` bytes just written into reserve()'s room. False when
    // they break the limits or are not msgpack: the stream is lost then.
    bool commit(std::size_t size);

    enum class Next { Message, Pending, Broken };
    // The next whole message, if one has arrived, with its long binaries.
    Next next(msgpack::object_handle& message, PlanePayloads& payloads);
    // Whether a whole message waits to be taken.
    bool hasMessage() const { return guard_.completeMessages() > taken_; }

    const std::string& problem() const;

  private:
    struct Pending {
        std::size_t message;  // the message's number in the stream
        PlanePayload payload;
    };
    std::size_t startPayload(char* header, std::size_t after, std::size_t size);

    MessageGuard guard_;
    msgpack::unpacker unpacker_;
    std::string decodeProblem_;
    std::deque<Pending> payloads_;
    std::size_t payloadFilled_ = 0;  // bytes of payloads_.back() received so far
    bool inPayload_ = false;         // the stream's next bytes belong to payloads_.back()
    std::size_t taken_ = 0;          // messages handed out by next()
};

}  // namespace wib
