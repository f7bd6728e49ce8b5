// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <optional>
#include <string>

#include "plugins/method_table.h"
#include "plugins/rpc_error.h"

namespace wib {

struct CallResult {
    Reply reply;
    std::optional<RpcError> error;
};

// Runs one call: finds the method (438 when there is none), checks the
// arguments against its table entry (5), runs it, and turns whatever it
// throws into the error the plug-in gets: a subscript error is 9, running out
// of memory 7, anything else 5. Arguments are checked before anything runs,
// so a refused call leaves the document as it was. `payloads` are the
// request's long binaries, received apart from it.
CallResult Dispatch(CallContext& context, const std::string& method, const msgpack::object& params,
                    PlanePayloads& payloads);

}  // namespace wib
