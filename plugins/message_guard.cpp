// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/message_guard.h"

#include <algorithm>

namespace wib {

namespace {

bool IsExtension(std::uint8_t b) {
    return (b >= 0xc7 && b <= 0xc9) || (b >= 0xd4 && b <= 0xd8);
}

// Bytes of the header that starts with `b`, the first included; fixed-size
// numbers count wholly as header.
std::size_t HeaderLength(std::uint8_t b) {
    switch (b) {
        case 0xc4:
        case 0xcc:
        case 0xd0:
        case 0xd9:
            return 2;
        case 0xc5:
        case 0xcd:
        case 0xd1:
        case 0xda:
        case 0xdc:
        case 0xde:
            return 3;
        case 0xc6:
        case 0xca:
        case 0xce:
        case 0xd2:
        case 0xdb:
        case 0xdd:
        case 0xdf:
            return 5;
        case 0xcb:
        case 0xcf:
        case 0xd3:
            return 9;
        default:
            return 1;
    }
}

std::uint64_t BigEndian(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = (value << 8) | bytes[i];
    }
    return value;
}

}  // namespace

bool MessageGuard::check(const std::uint8_t* data, std::size_t size) {
    return checkUpToLongBinary(data, size, SIZE_MAX) == size && problem_.empty();
}

std::size_t MessageGuard::checkUpToLongBinary(const std::uint8_t* data, std::size_t size,
                                              std::size_t minBinary) {
    minBinary_ = minBinary;
    longBinary_ = 0;
    const std::size_t total = size;
    if (!problem_.empty()) {
        return 0;
    }
    while (size > 0 && longBinary_ == 0) {
        if (skip_ > 0) {
            const std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(skip_, size));
            skip_ -= n;
            data += n;
            size -= n;
            if (skip_ == 0) {
                closeValue();
            }
            continue;
        }
        const std::uint8_t b = *data++;
        --size;
        if (headHave_ == 0) {
            if (b == 0xc1) {
                return fail("byte 0xc1 is not msgpack");
            }
            if (IsExtension(b)) {
                return fail("extension types are not accepted");
            }
            headNeed_ = HeaderLength(b);
        }
        head_[headHave_++] = b;
        if (headHave_ == headNeed_) {
            headHave_ = 0;
            if (!startValue()) {
                return total - size;
            }
        }
    }
    return total - size;
}

bool MessageGuard::startValue() {
    if (++values_ > limits().values) {
        return fail("too many values in one message");
    }
    messageBytes_ += headNeed_;
    if (messageBytes_ > limits().messageBytes) {
        return fail("message too large");
    }
    const std::uint8_t b = head_[0];
    const std::uint64_t length = BigEndian(head_ + 1, headNeed_ - 1);
    if (b >= 0x80 && b <= 0x8f) {
        return openContainer(b & 0x0f, 2 * std::uint64_t{b & 0x0fu});
    }
    if (b >= 0x90 && b <= 0x9f) {
        return openContainer(b & 0x0f, b & 0x0f);
    }
    if (b >= 0xa0 && b <= 0xbf) {
        return startPayload(b & 0x1f, limits().stringBytes, "string");
    }
    switch (b) {
        case 0xd9:
        case 0xda:
        case 0xdb:
            return startPayload(length, limits().stringBytes, "string");
        case 0xc4:
        case 0xc5:
        case 0xc6:
            return startPayload(length, limits().binBytes, "binary");
        case 0xdc:
        case 0xdd:
            return openContainer(length, length);
        case 0xde:
        case 0xdf:
            return openContainer(length, 2 * length);
        default:
            closeValue();
            return true;
    }
}

bool MessageGuard::startPayload(std::uint64_t length, std::size_t limit, const char* what) {
    if (length > limit) {
        return fail(std::string(what) + " too long");
    }
    messageBytes_ += length;
    if (messageBytes_ > limits().messageBytes) {
        return fail("message too large");
    }
    skip_ = length;
    if (head_[0] == 0xc6 && length >= minBinary_) {
        longBinary_ = length;
    }
    if (skip_ == 0) {
        closeValue();
    }
    return true;
}

bool MessageGuard::openContainer(std::uint64_t items, std::uint64_t values) {
    if (items > limits().containerItems) {
        return fail("array or map too long");
    }
    if (open_.size() + 1 > limits().depth) {
        return fail("nested too deeply");
    }
    if (values == 0) {
        closeValue();
    } else {
        open_.push_back(values);
    }
    return true;
}

void MessageGuard::closeValue() {
    while (!open_.empty()) {
        if (--open_.back() > 0) {
            return;
        }
        open_.pop_back();
    }
    ++messages_;
    messageBytes_ = 0;
    values_ = 0;
}

bool MessageGuard::fail(std::string problem) {
    problem_ = std::move(problem);
    return false;
}

}  // namespace wib
