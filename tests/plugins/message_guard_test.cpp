// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <msgpack.hpp>

#include <cstring>
#include <string>

#include "plugins/message_guard.h"
#include "plugins/message_reader.h"

namespace wib {
namespace {

constexpr WireLimits kSmall{1000, 100, 500, 8, 40, 4};

std::string Packed(const msgpack::sbuffer& buffer) {
    return std::string(buffer.data(), buffer.size());
}

// Three messages that use every kind of value the guard must walk over.
std::string ThreeMessages() {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(4);
    packer.pack(0);
    packer.pack(70000u);
    packer.pack(std::string("Wib_SetRbuffer"));
    packer.pack_array(1);
    packer.pack_array(3);
    packer.pack(-1);
    packer.pack(300);
    packer.pack_bin(3);
    packer.pack_bin_body("abc", 3);

    packer.pack_map(3);
    packer.pack(std::string("f"));
    packer.pack(1.5);
    packer.pack(std::string("g"));
    packer.pack(-1234567890123LL);
    packer.pack(std::string(""));
    packer.pack_array(0);

    packer.pack(true);
    return Packed(buffer);
}

bool Check(MessageGuard& guard, const std::string& bytes) {
    return guard.check(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

TEST(MessageGuard, FindsEveryMessageEndHoweverTheBytesAreSplit) {
    const std::string stream = ThreeMessages();
    for (std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{5}, stream.size()}) {
        MessageGuard guard(kConnectedLimits);
        for (std::size_t at = 0; at < stream.size(); at += piece) {
            ASSERT_TRUE(Check(guard, stream.substr(at, piece))) << guard.problem();
        }
        EXPECT_EQ(guard.completeMessages(), 3u) << "pieces of " << piece;
    }
    // A truncated message is simply not complete yet.
    MessageGuard guard(kConnectedLimits);
    EXPECT_TRUE(Check(guard, stream.substr(0, stream.size() - 1)));
    EXPECT_EQ(guard.completeMessages(), 2u);
    EXPECT_TRUE(Check(guard, stream.substr(stream.size() - 1)));
    EXPECT_EQ(guard.completeMessages(), 3u);
}

TEST(MessageGuard, RefusesOversizedDeclaredLengthsFromTheHeaderAlone) {
    // Headers only: the payloads they announce never need to arrive.
    const std::string bin32("\xc6\x7f\xff\xff\xff", 5);
    const std::string str32("\xdb\x00\x10\x00\x01", 5);  // one past 1 MiB
    const std::string array32("\xdd\x7f\xff\xff\xff", 5);
    const std::string map16("\xde\x08\x00", 3);
    for (const std::string& header : {bin32, str32, array32, map16}) {
        MessageGuard guard(kConnectedLimits);
        EXPECT_FALSE(Check(guard, header)) << "header " << header.size();
        EXPECT_FALSE(guard.problem().empty());
    }
    // The largest plane, (16384 + 1)^2 bytes, is allowed; one byte more is not.
    MessageGuard largest(kConnectedLimits);
    EXPECT_TRUE(Check(largest, std::string("\x91\xc6\x10\x00\x80\x01", 6)));
    MessageGuard guard(kConnectedLimits);
    EXPECT_FALSE(Check(guard, std::string("\x91\xc6\x10\x00\x80\x02", 6)));
    EXPECT_EQ(guard.problem(), "binary too long");
}

TEST(MessageGuard, RefusesDeepNestingManyValuesAndBigMessages) {
    MessageGuard deep(kSmall);
    EXPECT_TRUE(Check(deep, std::string(4, '\x91')));
    EXPECT_FALSE(Check(deep, std::string(1, '\x91')));
    EXPECT_EQ(deep.problem(), "nested too deeply");

    MessageGuard many(kSmall);
    std::string values(1, '\x98');  // 8 arrays of 8 integers
    for (int i = 0; i < 8; ++i) {
        values += '\x98' + std::string(8, '\x01');
    }
    EXPECT_FALSE(Check(many, values));
    EXPECT_EQ(many.problem(), "too many values in one message");

    // Each binary is allowed; together they pass the message limit.
    MessageGuard big(kSmall);
    std::string bins(1, '\x93');
    for (int i = 0; i < 3; ++i) {
        bins += std::string("\xc5\x01\x90", 3) + std::string(400, 'x');
    }
    EXPECT_FALSE(Check(big, bins));
    EXPECT_EQ(big.problem(), "message too large");
}

TEST(MessageGuard, RefusesExtensionsAndTheUnusedByteAndStaysRefused) {
    MessageGuard ext(kConnectedLimits);
    EXPECT_FALSE(Check(ext, std::string("\xd4\x01\x00", 3)));
    MessageGuard unused(kConnectedLimits);
    EXPECT_FALSE(Check(unused, std::string("\x92\x01\xc1", 3)));
    EXPECT_FALSE(Check(unused, std::string("\x01", 1)));
}

TEST(MessageGuard, HoldsTheFirstMessageToTheGreetingLimits) {
    msgpack::sbuffer plane;
    msgpack::packer<msgpack::sbuffer>(plane).pack_bin(2000);
    const std::string header = Packed(plane);
    MessageGuard first(kGreetingLimits, kConnectedLimits);
    EXPECT_FALSE(Check(first, header));
    MessageGuard later(kGreetingLimits, kConnectedLimits);
    EXPECT_TRUE(Check(later, std::string("\x91\x01", 2)));
    EXPECT_TRUE(Check(later, header));
}

TEST(MessageReader, DecodesWholeMessagesAndWaitsForTheRest) {
    const std::string stream = ThreeMessages();
    MessageReader reader(kConnectedLimits, kConnectedLimits);
    msgpack::object_handle message;
    PlanePayloads payloads;
    const std::size_t half = stream.size() - 5;  // within the second message
    std::memcpy(reader.reserve(half), stream.data(), half);
    ASSERT_TRUE(reader.commit(half));
    ASSERT_EQ(reader.next(message, payloads), MessageReader::Next::Message);
    const msgpack::object& plane = message.get().via.array.ptr[3].via.array.ptr[0];
    EXPECT_EQ(std::string(plane.via.array.ptr[2].via.bin.ptr, 3), "abc");
    EXPECT_EQ(reader.next(message, payloads), MessageReader::Next::Pending);

    std::memcpy(reader.reserve(stream.size() - half), stream.data() + half, stream.size() - half);
    ASSERT_TRUE(reader.commit(stream.size() - half));
    ASSERT_EQ(reader.next(message, payloads), MessageReader::Next::Message);
    EXPECT_EQ(message.get().type, msgpack::type::MAP);
    ASSERT_EQ(reader.next(message, payloads), MessageReader::Next::Message);
    EXPECT_EQ(message.get().as<bool>(), true);
    EXPECT_EQ(reader.next(message, payloads), MessageReader::Next::Pending);
}

// Two long binaries in one message, then a short message: the long ones
// arrive as payloads of their own whatever the pieces the stream comes in,
// referred to by index, and the message waits until the last of their bytes.
TEST(MessageReader, ReceivesLongBinariesApartFromTheirMessage) {
    const std::size_t longBytes = kPayloadMinBytes + 3;
    std::string first(longBytes, '\0');
    std::string second(2 * longBytes, '\0');
    for (std::size_t i = 0; i < first.size(); ++i) {
        first[i] = static_cast<char>(i * 7 % 253);
    }
    for (std::size_t i = 0; i < second.size(); ++i) {
        second[i] = static_cast<char>(i * 11 % 241);
    }
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(3);
    packer.pack_bin(static_cast<std::uint32_t>(first.size()));
    packer.pack_bin_body(first.data(), static_cast<std::uint32_t>(first.size()));
    packer.pack_bin(4);
    packer.pack_bin_body("wxyz", 4);
    packer.pack_bin(static_cast<std::uint32_t>(second.size()));
    packer.pack_bin_body(second.data(), static_cast<std::uint32_t>(second.size()));
    packer.pack(42);
    const std::string stream = Packed(buffer);

    for (const std::size_t piece :
         {std::size_t{1}, std::size_t{3}, std::size_t{4096}, stream.size()}) {
        MessageReader reader(kConnectedLimits, kConnectedLimits);
        msgpack::object_handle message;
        PlanePayloads payloads;
        std::size_t fed = 0;
        int early = 0;
        while (fed < stream.size()) {
            const std::size_t n = std::min({piece, stream.size() - fed, reader.wanted()});
            std::memcpy(reader.reserve(n), stream.data() + fed, n);
            ASSERT_TRUE(reader.commit(n)) << reader.problem();
            fed += n;
            if (fed < stream.size() - 1 &&
                reader.next(message, payloads) != MessageReader::Next::Pending) {
                ++early;
            }
        }
        EXPECT_EQ(early, 0) << "pieces of " << piece;
        ASSERT_EQ(reader.next(message, payloads), MessageReader::Next::Message)
            << "pieces of " << piece << ": " << reader.problem();
        const msgpack::object& o = message.get();
        ASSERT_EQ(o.via.array.size, 3u);
        ASSERT_EQ(o.via.array.ptr[0].type, msgpack::type::EXT);
        EXPECT_EQ(o.via.array.ptr[0].via.ext.type(), kPayloadExtension);
        EXPECT_EQ(std::string(o.via.array.ptr[0].via.ext.data(), 2), std::string("\0\0", 2));
        EXPECT_EQ(std::string(o.via.array.ptr[1].via.bin.ptr, 4), "wxyz");
        EXPECT_EQ(std::string(o.via.array.ptr[2].via.ext.data(), 2), std::string("\0\1", 2));
        ASSERT_EQ(payloads.size(), 2u);
        EXPECT_EQ(
            std::string(reinterpret_cast<const char*>(payloads[0].bytes.get()), payloads[0].size),
            first);
        EXPECT_EQ(
            std::string(reinterpret_cast<const char*>(payloads[1].bytes.get()), payloads[1].size),
            second);
        ASSERT_EQ(reader.next(message, payloads), MessageReader::Next::Message);
        EXPECT_EQ(message.get().as<int>(), 42);
        EXPECT_TRUE(payloads.empty());
    }
}

TEST(MessageReader, RefusesBytesTheGuardRefuses) {
    MessageReader reader(kGreetingLimits, kConnectedLimits);
    const std::string header("\xdb\x00\x01\x00\x00", 5);
    std::memcpy(reader.reserve(header.size()), header.data(), header.size());
    EXPECT_FALSE(reader.commit(header.size()));
    EXPECT_EQ(reader.problem(), "string too long");
}

}  // namespace
}  // namespace wib
