// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/automation_server.h"

#include <QLocalServer>
#include <QLocalSocket>

#include <algorithm>

#include "core/interface_lock.h"
#include "plugins/canvas_events.h"
#include "plugins/dispatch.h"
#include "plugins/token.h"

namespace wib {

namespace {

// Bytes taken from a socket at a time, so one greedy peer cannot make the
// server hold more than this beyond the message it is reading.
constexpr qint64 kReadChunk = 8 << 20;

bool IsConnectWithToken(const Envelope& envelope, const std::string& token) {
    const msgpack::object& params = *envelope.params;
    if (!envelope.wantsResponse || envelope.method != "Wib_Connect" || params.via.array.size != 1 ||
        params.via.array.ptr[0].type != msgpack::type::STR) {
        return false;
    }
    const msgpack::object_str& presented = params.via.array.ptr[0].via.str;
    return TokenMatches(std::string(presented.ptr, presented.size), token);
}

}  // namespace

AutomationServer::AutomationServer(AutomationHost& host, QObject* parent)
    : QObject(parent), host_(host), server_(new QLocalServer(this)) {
    connect(server_, &QLocalServer::newConnection, this, &AutomationServer::accept);
}

AutomationServer::~AutomationServer() {
    close();
}

bool AutomationServer::listen(const QString& name, const QString& token) {
    close();
    state_.token = token.toStdString();
    QLocalServer::removeServer(name);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    return server_->listen(name);
}

QString AutomationServer::fullServerName() const {
    return server_->fullServerName();
}

QString AutomationServer::errorString() const {
    return server_->errorString();
}

void AutomationServer::close() {
    server_->close();
    const auto open = connections_;
    for (const auto& connection : open) {
        if (!connection->gone) {
            connection->closing = true;
            connection->socket->abort();
            gone(connection);
        }
    }
}

void AutomationServer::accept() {
    while (QLocalSocket* socket = server_->nextPendingConnection()) {
        auto connection = std::make_shared<PluginConnection>(socket);
        connections_.push_back(connection);
        const std::weak_ptr<PluginConnection> weak = connection;
        connection->state.notify = [weak](const msgpack::sbuffer& message) {
            if (const auto c = weak.lock()) {
                c->send(message);
            }
        };
        connect(socket, &QLocalSocket::readyRead, this, [this, weak] {
            if (const auto c = weak.lock()) {
                read(c);
            }
        });
        connect(socket, &QLocalSocket::disconnected, this, [this, weak] {
            if (const auto c = weak.lock()) {
                gone(c);
            }
        });
        read(connection);
    }
}

void AutomationServer::read(const std::shared_ptr<PluginConnection>& connection) {
    QLocalSocket& socket = *connection->socket;
    while (!connection->closing && socket.bytesAvailable() > 0) {
        const qint64 chunk = std::min(socket.bytesAvailable(), kReadChunk);
        char* room = connection->reader.reserve(static_cast<std::size_t>(chunk));
        const qint64 got = socket.read(room, chunk);
        if (got <= 0) {
            break;
        }
        if (!connection->reader.commit(static_cast<std::size_t>(got))) {
            drop(*connection, connection->reader.problem());
            break;
        }
        takeMessages(connection);
    }
    drain();
}

void AutomationServer::takeMessages(const std::shared_ptr<PluginConnection>& connection) {
    msgpack::object_handle message;
    while (!connection->closing) {
        const MessageReader::Next next = connection->reader.next(message);
        if (next == MessageReader::Next::Pending) {
            return;
        }
        if (next == MessageReader::Next::Broken) {
            drop(*connection, connection->reader.problem());
            return;
        }
        auto envelope = ReadEnvelope(message.get());
        if (!envelope) {
            drop(*connection, "not a request or notification");
            return;
        }
        if (!connection->greeted && !greet(*connection, *envelope)) {
            return;
        }
        queue_.push_back({connection, std::move(message), std::move(*envelope)});
    }
}

bool AutomationServer::greet(PluginConnection& connection, const Envelope& envelope) {
    if (IsConnectWithToken(envelope, state_.token)) {
        connection.greeted = true;
        return true;
    }
    if (envelope.wantsResponse) {
        connection.send(PackErrorResponse(envelope.msgid, MakeError(kErrorPermission)));
    }
    host_.workspace.host.log.line(
        "Plug-in connection refused: it did not begin with Wib_Connect and the right token.");
    connection.closing = true;
    connection.socket->disconnectFromServer();
    return false;
}

void AutomationServer::drop(PluginConnection& connection, const std::string& reason) {
    host_.workspace.host.log.line("Plug-in connection dropped: " + reason + ".");
    connection.closing = true;
    connection.socket->abort();
}

void AutomationServer::gone(const std::shared_ptr<PluginConnection>& connection) {
    if (connection->gone) {
        return;
    }
    // Whole messages that arrived before the close still run, in order.
    if (!connection->closing) {
        read(connection);
    }
    connection->gone = true;
    QueuedCall farewell{connection, {}, {}, true};
    queue_.push_back(std::move(farewell));
    drain();
}

void AutomationServer::drain() {
    if (busy_) {
        return;
    }
    busy_ = true;
    while (!queue_.empty()) {
        QueuedCall call = std::move(queue_.front());
        queue_.pop_front();
        run(call);
    }
    busy_ = false;
}

void AutomationServer::run(QueuedCall& call) {
    PluginConnection& connection = *call.connection;
    if (call.farewell) {
        release(connection);
        return;
    }
    CallContext context{host_, state_, connection.state};
    const Envelope& envelope = call.envelope;
    const CallResult result = Dispatch(context, envelope.method, *envelope.params);
    if (!envelope.wantsResponse) {
        if (result.error) {
            host_.workspace.host.log.line("Plug-in notification " + envelope.method +
                                          " failed: " + result.error->message);
        }
    } else if (result.error) {
        connection.send(PackErrorResponse(envelope.msgid, *result.error));
    } else {
        connection.send(PackResponse(envelope.msgid, result.reply), result.reply.tail(),
                        result.reply.tailSize());
    }
    if (result.error && result.error->code == kErrorPermission && !connection.closing) {
        connection.closing = true;
        connection.socket->disconnectFromServer();
    }
}

void AutomationServer::release(PluginConnection& connection) {
    Log& log = host_.workspace.host.log;
    if (connection.state.interfaceLocked) {
        SetMainFrameEnabled(host_.workspace, true);
        log.line("Plug-in disconnected while holding the interface lock; windows enabled again.");
    }
    if (connection.state.bufferLocked) {
        SetCanvasEnabled(host_.workspace, true);
        log.line("Plug-in disconnected while holding the buffer lock; canvas enabled again.");
    }
    if (connection.state.statusOpen) {
        host_.workspace.host.prompter.statusClose();
        state_.statusCaption = kDefaultStatusCaption;
        log.line("Plug-in disconnected with its status window open; status window closed.");
    }
    const CanvasEvents* events = host_.canvasEvents;
    if (events != nullptr && connection.state.canvasTurnNumber != 0 &&
        connection.state.canvasTurnNumber == events->turn()) {
        log.line("Plug-in disconnected while listening to the canvas; the canvas paints again.");
    }
    connection.state = {};
    QObject::disconnect(connection.socket, nullptr, this, nullptr);
    connection.socket->deleteLater();
    std::erase_if(connections_, [&connection](const auto& c) { return c.get() == &connection; });
}

}  // namespace wib
