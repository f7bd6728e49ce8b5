// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/rpc_envelope.h"

#include <limits>

namespace wib {

namespace {

constexpr std::uint64_t kRequest = 0;
constexpr std::uint64_t kResponse = 1;
constexpr std::uint64_t kNotification = 2;

bool IsUnsigned(const msgpack::object& o, std::uint64_t max) {
    return o.type == msgpack::type::POSITIVE_INTEGER && o.via.u64 <= max;
}

bool IsKind(const msgpack::object& o, std::uint64_t kind) {
    return o.type == msgpack::type::POSITIVE_INTEGER && o.via.u64 == kind;
}

}  // namespace

std::optional<Envelope> ReadEnvelope(const msgpack::object& message) {
    if (message.type != msgpack::type::ARRAY || message.via.array.size < 3) {
        return std::nullopt;
    }
    const msgpack::object* item = message.via.array.ptr;
    const std::uint32_t size = message.via.array.size;
    Envelope envelope;
    std::size_t next = 1;
    if (IsKind(item[0], kRequest) && size == 4) {
        if (!IsUnsigned(item[1], std::numeric_limits<std::uint32_t>::max())) {
            return std::nullopt;
        }
        envelope.msgid = static_cast<std::uint32_t>(item[1].via.u64);
        next = 2;
    } else if (IsKind(item[0], kNotification) && size == 3) {
        envelope.wantsResponse = false;
    } else {
        return std::nullopt;
    }
    const msgpack::object& method = item[next];
    const msgpack::object& params = item[next + 1];
    if (method.type != msgpack::type::STR || params.type != msgpack::type::ARRAY) {
        return std::nullopt;
    }
    envelope.method.assign(method.via.str.ptr, method.via.str.size);
    envelope.params = &params;
    return envelope;
}

msgpack::sbuffer PackResponse(std::uint32_t msgid, const Reply& reply) {
    msgpack::sbuffer out;
    msgpack::packer<msgpack::sbuffer> packer(out);
    packer.pack_array(4);
    packer.pack(kResponse);
    packer.pack(msgid);
    packer.pack_nil();
    out.write(reply.head().data(), reply.head().size());
    return out;
}

msgpack::sbuffer PackErrorResponse(std::uint32_t msgid, const RpcError& error) {
    msgpack::sbuffer out;
    msgpack::packer<msgpack::sbuffer> packer(out);
    packer.pack_array(4);
    packer.pack(kResponse);
    packer.pack(msgid);
    packer.pack_array(2);
    packer.pack(error.code);
    packer.pack(error.message);
    packer.pack_nil();
    return out;
}

}  // namespace wib
