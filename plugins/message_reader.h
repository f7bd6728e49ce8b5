// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstddef>
#include <string>

#include "plugins/message_guard.h"
#include "plugins/wire_limits.h"

namespace wib {

// Turns a connection's byte stream into whole msgpack messages. Bytes are read
// straight into the decoder's buffer; the guard checks them there before the
// decoder sees them. Binaries in a message refer to that buffer instead of
// being copied.
class MessageReader {
  public:
    // The first message is held to `first` (the greeting), all later ones to `rest`.
    MessageReader(const WireLimits& first, const WireLimits& rest);

    // Room for `size` more bytes of the stream; fill it, then commit().
    char* reserve(std::size_t size);
    // Checks the `size` bytes just written into reserve()'s room. False when
    // they break the limits or are not msgpack: the stream is lost then.
    bool commit(std::size_t size);

    enum class Next { Message, Pending, Broken };
    // The next whole message, if one has arrived.
    Next next(msgpack::object_handle& message);

    const std::string& problem() const;

  private:
    MessageGuard guard_;
    msgpack::unpacker unpacker_;
    std::string decodeProblem_;
};

}  // namespace wib
