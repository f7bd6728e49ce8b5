// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "plugins/message_reader.h"
#include "plugins/method_table.h"
#include "plugins/rpc_envelope.h"

class QSocketNotifier;

namespace wib {

// One plug-in's connection as the server sees it: the socket itself, read and
// written without a buffering layer in between, so that bytes go straight
// from the kernel into the message reader and answers straight from the
// document into the kernel. Whatever the kernel does not take at once waits
// in the connection's outbox.
class PluginConnection {
  public:
    // Takes over `descriptor`, a connected socket. `wake` runs when bytes or
    // the peer's close may be read, when the outbox has emptied, and when
    // writing failed.
    PluginConnection(int descriptor, std::function<void(PluginConnection&)> wake);
    PluginConnection(const PluginConnection&) = delete;
    PluginConnection& operator=(const PluginConnection&) = delete;
    ~PluginConnection();

    enum class Received { Some, Nothing, Closed, Broken };
    // Reads what the socket holds, up to what the reader asks for.
    Received receive();

    // Sends a response, then `tailSize` bytes from `tail`; what the kernel
    // does not take is copied into the outbox. Nothing once the socket has closed.
    void send(const msgpack::sbuffer& head, const char* tail = nullptr, std::size_t tailSize = 0);
    // Answer bytes written but not yet taken by the kernel.
    std::size_t unsentBytes() const { return unsent_; }

    // Whether the server wants to hear about arriving bytes.
    void setReading(bool on);
    // No more reading or writing; the descriptor closes with the connection.
    void shutDown();
    bool open() const { return fd_ >= 0 && !shut_; }
    // A write found the connection broken; the peer is as good as gone.
    bool failed() const { return failed_; }

    // Only a short Wib_Connect request may come first.
    MessageReader reader{kGreetingLimits, kConnectedLimits};
    ConnectionState state;
    bool greeted = false;  // its Wib_Connect carried the right token
    bool closing = false;  // refused or dropped: nothing more is read from it
    bool gone = false;     // the peer has closed, or the socket failed

  private:
    void flushOutbox();
    void fail();

    int fd_;
    bool shut_ = false;
    std::unique_ptr<QSocketNotifier> readNotifier_;
    std::unique_ptr<QSocketNotifier> writeNotifier_;
    std::function<void(PluginConnection&)> wake_;
    bool failed_ = false;  // a write found the connection broken
    std::deque<std::vector<char>> outbox_;
    std::size_t outboxFront_ = 0;  // bytes of the first entry already sent
    std::size_t unsent_ = 0;
};

// One call waiting for its turn: the message and the request it holds.
struct QueuedCall {
    msgpack::object_handle message;
    Envelope envelope;  // points into `message`
    PlanePayloads payloads;
};

}  // namespace wib
