// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/message_reader.h"

namespace wib {

namespace {

constexpr std::size_t kInitialBuffer = 64 * 1024;

// A second fence behind the guard, at the limits of every message but the first.
msgpack::unpack_limit DecoderLimits(const WireLimits& l) {
    return msgpack::unpack_limit(l.containerItems, l.containerItems, l.stringBytes, l.binBytes, 0,
                                 l.depth);
}

// Binaries (planes) stay in the read buffer; everything else is small and is
// copied into the message's own memory.
bool ReferenceBinaries(msgpack::type::object_type type, std::size_t, void*) {
    return type == msgpack::type::BIN;
}

}  // namespace

MessageReader::MessageReader(const WireLimits& first, const WireLimits& rest)
    : guard_(first, rest),
      unpacker_(&ReferenceBinaries, nullptr, kInitialBuffer, DecoderLimits(rest)) {}

char* MessageReader::reserve(std::size_t size) {
    unpacker_.reserve_buffer(size);
    return unpacker_.buffer();
}

bool MessageReader::commit(std::size_t size) {
    if (!guard_.check(reinterpret_cast<const std::uint8_t*>(unpacker_.buffer()), size)) {
        return false;
    }
    unpacker_.buffer_consumed(size);
    return true;
}

MessageReader::Next MessageReader::next(msgpack::object_handle& message) {
    if (!decodeProblem_.empty()) {
        return Next::Broken;
    }
    try {
        return unpacker_.next(message) ? Next::Message : Next::Pending;
    } catch (const std::exception& error) {
        decodeProblem_ = error.what();
        return Next::Broken;
    }
}

const std::string& MessageReader::problem() const {
    return decodeProblem_.empty() ? guard_.problem() : decodeProblem_;
}

}  // namespace wib
