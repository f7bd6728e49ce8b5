// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstdint>
#include <optional>
#include <string>

#include "plugins/reply.h"
#include "plugins/rpc_error.h"

namespace wib {

// A request [0, msgid, method, params] or a notification [2, method, params]
// from a plug-in. `params` points into the message it was read from.
struct Envelope {
    bool wantsResponse = true;
    std::uint32_t msgid = 0;
    std::string method;
    const msgpack::object* params = nullptr;
};

// Nothing when the message is not a well-formed request or notification: a
// top-level array of the right length, a msgid that fits 32 bits, a string
// method and an array of arguments.
std::optional<Envelope> ReadEnvelope(const msgpack::object& message);

// The response [1, msgid, error, result] up to the reply's bytes that follow
// its head (a plane's bytes), which the caller sends after it.
msgpack::sbuffer PackResponse(std::uint32_t msgid, const Reply& reply);
msgpack::sbuffer PackErrorResponse(std::uint32_t msgid, const RpcError& error);

}  // namespace wib
