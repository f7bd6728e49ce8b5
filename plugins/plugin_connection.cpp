// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_connection.h"

#include <sys/socket.h>

#include <QLocalSocket>

namespace wib {

namespace {

// Big enough that a whole plane moves in a few system calls. The system may
// cap it lower; that only costs speed.
constexpr int kSocketBufferBytes = 4 << 20;

void RaiseSocketBuffers(QLocalSocket& socket) {
    const auto fd = static_cast<int>(socket.socketDescriptor());
    if (fd < 0) {
        return;
    }
    const int size = kSocketBufferBytes;
    setsockopt(fd, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
}

// Bytes the kernel took without waiting; 0 when it took none or failed (the
// socket then reports the failure when it writes).
std::size_t SendNow(QLocalSocket& socket, const msgpack::sbuffer& head, const char* tail,
                    std::size_t tailSize) {
    iovec parts[2] = {{const_cast<char*>(head.data()), head.size()},
                      {const_cast<char*>(tail), tailSize}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = tailSize > 0 ? 2 : 1;
    const ssize_t sent =
        sendmsg(static_cast<int>(socket.socketDescriptor()), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
    return sent > 0 ? static_cast<std::size_t>(sent) : 0;
}

}  // namespace

PluginConnection::PluginConnection(QLocalSocket* connectedSocket) : socket(connectedSocket) {
    socket->setReadBufferSize(0);
    RaiseSocketBuffers(*socket);
}

void PluginConnection::send(const msgpack::sbuffer& head, const char* tail, std::size_t tailSize) {
    if (socket->state() != QLocalSocket::ConnectedState) {
        return;
    }
    // With nothing queued, the kernel takes what it can straight from the
    // caller's memory (a plane from the document); the socket queues the rest.
    std::size_t sent = 0;
    if (socket->bytesToWrite() == 0) {
        sent = SendNow(*socket, head, tail, tailSize);
    }
    if (sent < head.size()) {
        socket->write(head.data() + sent, static_cast<qint64>(head.size() - sent));
        sent = head.size();
    }
    const std::size_t tailSent = sent - head.size();
    if (tailSent < tailSize) {
        socket->write(tail + tailSent, static_cast<qint64>(tailSize - tailSent));
    }
    if (socket->bytesToWrite() > 0) {
        socket->flush();
    }
}

}  // namespace wib
