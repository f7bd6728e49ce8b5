// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstddef>
#include <memory>

#include "plugins/message_reader.h"
#include "plugins/method_table.h"
#include "plugins/rpc_envelope.h"

class QLocalSocket;

namespace wib {

// One plug-in's connection as the server sees it.
struct PluginConnection {
    explicit PluginConnection(QLocalSocket* connectedSocket);

    // Sends a response, then `tailSize` bytes from `tail`; nothing once the
    // socket has closed.
    void send(const msgpack::sbuffer& head, const char* tail = nullptr, std::size_t tailSize = 0);

    QLocalSocket* socket;
    // Only a short Wib_Connect request may come first.
    MessageReader reader{kGreetingLimits, kConnectedLimits};
    ConnectionState state;
    bool greeted = false;  // its Wib_Connect carried the right token
    bool closing = false;  // refused or dropped: nothing more is read from it
    bool gone = false;     // the socket has closed
};

// One entry of the server's queue: a call, or the news that a connection closed.
struct QueuedCall {
    std::shared_ptr<PluginConnection> connection;
    msgpack::object_handle message;
    Envelope envelope;  // points into `message`
    bool farewell = false;
};

}  // namespace wib
