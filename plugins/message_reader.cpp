// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/message_reader.h"

#include <algorithm>
#include <cstring>

namespace wib {

namespace {

constexpr std::size_t kInitialBuffer = 64 * 1024;

// Bytes read at a time outside a long binary: enough for many small calls,
// while the first bytes of a plane that arrive with its request's header and
// so are copied once more stay few.
constexpr std::size_t kReadBytes = 64 * 1024;

// A second fence behind the guard, at the limits of every message but the
// first; the only extension values are the payload references (a type byte
// and two data bytes).
msgpack::unpack_limit DecoderLimits(const WireLimits& l) {
    return msgpack::unpack_limit(l.containerItems, l.containerItems, l.stringBytes, l.binBytes, 3,
                                 l.depth);
}

// Binaries stay in the read buffer; everything else is small and is copied
// into the message's own memory.
bool ReferenceBinaries(msgpack::type::object_type type, std::size_t, void*) {
    return type == msgpack::type::BIN;
}

}  // namespace

MessageReader::MessageReader(const WireLimits& first, const WireLimits& rest)
    : guard_(first, rest),
      unpacker_(&ReferenceBinaries, nullptr, kInitialBuffer, DecoderLimits(rest)) {}

std::size_t MessageReader::wanted() const {
    return inPayload_ ? payloads_.back().payload.size - payloadFilled_ : kReadBytes;
}

char* MessageReader::reserve(std::size_t size) {
    if (inPayload_) {
        return reinterpret_cast<char*>(payloads_.back().payload.bytes.get()) + payloadFilled_;
    }
    unpacker_.reserve_buffer(size);
    return unpacker_.buffer();
}

bool MessageReader::commit(std::size_t size) {
    if (inPayload_) {
        auto* bytes = payloads_.back().payload.bytes.get() + payloadFilled_;
        guard_.check(bytes, size);
        payloadFilled_ += size;
        inPayload_ = payloadFilled_ < payloads_.back().payload.size;
        return true;
    }
    char* buffer = unpacker_.buffer();
    std::size_t checked = 0;
    while (checked < size) {
        checked +=
            guard_.checkUpToLongBinary(reinterpret_cast<const std::uint8_t*>(buffer) + checked,
                                       size - checked, kPayloadMinBytes);
        if (!guard_.problem().empty()) {
            return false;
        }
        if (guard_.longBinary() > 0) {
            size -= startPayload(buffer + checked - 5, checked, size);
        }
    }
    unpacker_.buffer_consumed(size);
    return true;
}

// Rewrites the five-byte binary header at `header` as a payload reference of
// the same length, moves the payload's bytes that came with it (from `after`
// up to `size`) into the payload and returns how many that was.
std::size_t MessageReader::startPayload(char* header, std::size_t after, std::size_t size) {
    const std::size_t message = guard_.completeMessages();
    const auto index = static_cast<std::size_t>(
        std::count_if(payloads_.begin(), payloads_.end(),
                      [message](const Pending& p) { return p.message == message; }));
    const std::size_t length = guard_.longBinary();
    payloads_.push_back(
        {message, {std::make_unique_for_overwrite<std::uint8_t[]>(length), length}});
    header[0] = static_cast<char>(0xc7);
    header[1] = 2;
    header[2] = kPayloadExtension;
    header[3] = static_cast<char>(index >> 8);
    header[4] = static_cast<char>(index & 0xff);

    char* here = header + 5;
    const std::size_t present = std::min<std::size_t>(length, size - after);
    guard_.check(reinterpret_cast<const std::uint8_t*>(here), present);
    std::memcpy(payloads_.back().payload.bytes.get(), here, present);
    std::memmove(here, here + present, size - after - present);
    payloadFilled_ = present;
    inPayload_ = present < length;
    return present;
}

MessageReader::Next MessageReader::next(msgpack::object_handle& message, PlanePayloads& payloads) {
    if (!decodeProblem_.empty()) {
        return Next::Broken;
    }
    // A message's payloads may still be arriving after the rest of it.
    if (!hasMessage()) {
        return Next::Pending;
    }
    try {
        if (!unpacker_.next(message)) {
            return Next::Pending;
        }
    } catch (const std::exception& error) {
        decodeProblem_ = error.what();
        return Next::Broken;
    }
    payloads.clear();
    while (!payloads_.empty() && payloads_.front().message == taken_) {
        payloads.push_back(std::move(payloads_.front().payload));
        payloads_.pop_front();
    }
    ++taken_;
    return Next::Message;
}

const std::string& MessageReader::problem() const {
    return decodeProblem_.empty() ? guard_.problem() : decodeProblem_;
}

}  // namespace wib
