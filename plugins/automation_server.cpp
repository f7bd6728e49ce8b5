// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/automation_server.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QLocalServer>

#include <algorithm>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "core/interface_lock.h"
#include "plugins/canvas_events.h"
#include "plugins/dispatch.h"
#include "plugins/token.h"

namespace wib {

namespace {

// Answers a connection may leave unread before it is no longer read from:
// two planes of the document, and never less than this.
constexpr std::size_t kMinUnsentLimit = 4 << 20;

bool IsConnectWithToken(const Envelope& envelope, const std::string& token) {
    const msgpack::object& params = *envelope.params;
    if (!envelope.wantsResponse || envelope.method != "Wib_Connect" || params.via.array.size != 1 ||
        params.via.array.ptr[0].type != msgpack::type::STR) {
        return false;
    }
    const msgpack::object_str& presented = params.via.array.ptr[0].via.str;
    return TokenMatches(std::string(presented.ptr, presented.size), token);
}

// Hands each accepted socket's descriptor over as it is, without the
// buffering of a QLocalSocket.
class DescriptorServer : public QLocalServer {
  public:
    DescriptorServer(QObject* parent, std::function<void(int)> accepted)
        : QLocalServer(parent), accepted_(std::move(accepted)) {}

  protected:
    void incomingConnection(quintptr descriptor) override {
        accepted_(static_cast<int>(descriptor));
    }

  private:
    std::function<void(int)> accepted_;
};

// Memory freed by a connection (a flood of unread answers, a plane being
// received) goes back to the system rather than staying with the program.
void GiveBackFreedMemory() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

}  // namespace

AutomationServer::AutomationServer(AutomationHost& host, QObject* parent)
    : QObject(parent),
      host_(host),
      server_(new DescriptorServer(this, [this](int descriptor) { accept(descriptor); })) {}

AutomationServer::~AutomationServer() {
    close();
}

bool AutomationServer::listen(const QString& name, const QString& token) {
    close();
    state_.token = token.toStdString();
    QLocalServer::removeServer(name);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server_->listen(name)) {
        return false;
    }
    // Connecting needs write permission only; nobody needs to execute a socket.
    ::chmod(server_->fullServerName().toLocal8Bit().constData(), S_IRUSR | S_IWUSR);
    return true;
}

QString AutomationServer::fullServerName() const {
    return server_->fullServerName();
}

QString AutomationServer::errorString() const {
    return server_->errorString();
}

void AutomationServer::close() {
    server_->close();
    for (const auto& connection : connections_) {
        connection->closing = true;
        connection->shutDown();
    }
    if (!busy_) {
        releaseClosed();
    }
}

std::size_t AutomationServer::unsentBytes() const {
    std::size_t total = 0;
    for (const auto& connection : connections_) {
        total += connection->unsentBytes();
    }
    return total;
}

void AutomationServer::accept(int descriptor) {
    if (connections_.size() >= kMaxConnections) {
        ::close(descriptor);
        host_.workspace.host.log.line("Plug-in connection refused: the limit of " +
                                      std::to_string(kMaxConnections) +
                                      " connections at once was reached.");
        return;
    }
    connections_.push_back(std::make_unique<PluginConnection>(
        descriptor, [this](PluginConnection& connection) { wake(connection); }));
    // The notifier lives in the connection's own state, so the connection
    // outlives every use of it.
    PluginConnection* connection = connections_.back().get();
    connection->state.notify = [connection](const msgpack::sbuffer& message) {
        connection->send(message);
    };
}

void AutomationServer::wake(PluginConnection& connection) {
    switch (connection.receive()) {
        case PluginConnection::Received::Closed:
            connection.gone = true;
            break;
        case PluginConnection::Received::Broken:
            drop(connection, connection.reader.problem());
            break;
        case PluginConnection::Received::Some:
        case PluginConnection::Received::Nothing:
            break;
    }
    // Whole messages are taken before more is read, so a connection holds at
    // most one read's worth beyond the message in progress.
    connection.setReading(false);
    serve();
}

void AutomationServer::serve() {
    if (busy_) {
        return;
    }
    busy_ = true;
    servePosted_ = false;
    // One round: a call from each connection in turn. The connection list
    // may grow while a call runs; newcomers wait for the next round.
    const std::size_t count = connections_.size();
    for (std::size_t i = 0; i < count; ++i) {
        serveOne(*connections_[i]);
    }
    releaseClosed();
    const bool more = std::any_of(connections_.begin(), connections_.end(), [this](const auto& c) {
        return c->reader.hasMessage() && !throttled(*c);
    });
    for (const auto& connection : connections_) {
        connection->setReading(!connection->gone && !connection->closing &&
                               !connection->reader.hasMessage() && !throttled(*connection));
    }
    busy_ = false;
    // The next round comes from the event loop, which first lets every
    // connection that has become readable be read.
    if (more && !servePosted_) {
        servePosted_ = true;
        QMetaObject::invokeMethod(this, &AutomationServer::serve, Qt::QueuedConnection);
    }
}

void AutomationServer::serveOne(PluginConnection& connection) {
    if (connection.failed()) {
        connection.gone = true;
    }
    if (connection.closing || throttled(connection)) {
        return;
    }
    QueuedCall call;
    switch (connection.reader.next(call.message, call.payloads)) {
        case MessageReader::Next::Pending:
            return;
        case MessageReader::Next::Broken:
            drop(connection, connection.reader.problem());
            return;
        case MessageReader::Next::Message:
            break;
    }
    auto envelope = ReadEnvelope(call.message.get());
    if (!envelope) {
        drop(connection, "not a request or notification");
        return;
    }
    if (!connection.greeted && !greet(connection, *envelope)) {
        return;
    }
    call.envelope = std::move(*envelope);
    run(connection, call);
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
    return false;
}

void AutomationServer::drop(PluginConnection& connection, const std::string& reason) {
    host_.workspace.host.log.line("Plug-in connection dropped: " + reason + ".");
    connection.closing = true;
    connection.shutDown();
}

void AutomationServer::run(PluginConnection& connection, QueuedCall& call) {
    CallContext context{host_, state_, connection.state};
    const Envelope& envelope = call.envelope;
    const CallResult result = Dispatch(context, envelope.method, *envelope.params, call.payloads);
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
    if (result.error && result.error->code == kErrorPermission) {
        connection.closing = true;
    }
}

bool AutomationServer::throttled(const PluginConnection& connection) const {
    if (connection.gone) {
        return false;  // nothing it sent is read any more, so its answers cannot pile up
    }
    const Document& document = host_.workspace.document;
    const std::size_t plane = static_cast<std::size_t>(document.width + 1) *
                              static_cast<std::size_t>(document.height + 1);
    return connection.unsentBytes() > std::max(2 * plane, kMinUnsentLimit);
}

// Refused and dropped connections go at once; closed ones once the whole
// messages that arrived before the close have run, in order.
void AutomationServer::releaseClosed() {
    bool released = false;
    for (std::size_t i = 0; i < connections_.size();) {
        PluginConnection& connection = *connections_[i];
        if (connection.closing || (connection.gone && !connection.reader.hasMessage())) {
            release(connection);
            connections_.erase(connections_.begin() + static_cast<std::ptrdiff_t>(i));
            released = true;
        } else {
            ++i;
        }
    }
    if (released) {
        GiveBackFreedMemory();
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
    if (connection.state.pointerBefore) {
        host_.workspace.pointerShape = *connection.state.pointerBefore;
        host_.workspace.host.view.pointerShapeChanged(*connection.state.pointerBefore);
    }
    connection.state = {};
    connection.shutDown();
}

}  // namespace wib
