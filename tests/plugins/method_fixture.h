// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/commands.h"
#include "core/document_commands.h"
#include "plugins/dispatch.h"
#include "tests/plugins/map_controls.h"
#include "tests/plugins/program_parts.h"
#include "tests/plugins/raw_client.h"
#include "tests/support/test_host.h"

namespace wib::testing {

// Calls methods straight through the dispatcher, as the server does, over a
// TestHost workspace with an 8 x 6 document.
class MethodFixture : public ::testing::Test {
  protected:
    MethodFixture() {
        host.newDocument(8, 6);
        RegisterDocumentCommands(commands);
        server.token = "secret";
    }

    CallResult call(const std::string& method, const msgpack::sbuffer& params) {
        const msgpack::object_handle decoded = msgpack::unpack(params.data(), params.size());
        PlanePayloads none;
        return Dispatch(context, method, decoded.get(), none);
    }
    CallResult call(const std::string& method) { return call(method, Params()); }

    // The error code of a call, 0 when it succeeded.
    int errorOf(const std::string& method, const msgpack::sbuffer& params) {
        const CallResult result = call(method, params);
        return result.error ? result.error->code : 0;
    }

    // The answer of a call that must succeed, decoded as the plug-in sees it.
    msgpack::object_handle answer(const std::string& method, const msgpack::sbuffer& params) {
        const CallResult result = call(method, params);
        EXPECT_FALSE(result.error) << method << ": " << result.error->message;
        std::string bytes(result.reply.head().data(), result.reply.head().size());
        bytes.append(result.reply.tail(), result.reply.tailSize());
        return msgpack::unpack(bytes.data(), bytes.size());
    }
    msgpack::object_handle answer(const std::string& method) { return answer(method, Params()); }

    bool planeEquals(const msgpack::object& o, const Plane& plane) {
        const msgpack::object_bin& bin = o.via.array.ptr[2].via.bin;
        return o.via.array.ptr[0].as<int>() == plane.ubX() &&
               o.via.array.ptr[1].as<int>() == plane.ubY() && bin.size == plane.byteCount() &&
               std::memcmp(bin.ptr, plane.data(), bin.size) == 0;
    }

    TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry commands;
    MapControls controls;
    ProgramParts parts{host.workspace};
    AutomationHost automation{host.workspace,   commands,    controls,
                              "/opt/wibbleton", "/var/tmp",  3,
                              parts.paint,      parts.files, parts.frames};
    ServerState server;
    ConnectionState connection;
    CallContext context{automation, server, connection};
};

}  // namespace wib::testing
