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

}  // namespace

PluginConnection::PluginConnection(QLocalSocket* connectedSocket) : socket(connectedSocket) {
    socket->setReadBufferSize(0);
    RaiseSocketBuffers(*socket);
}

void PluginConnection::send(const msgpack::sbuffer& head, const char* tail, std::size_t tailSize) {
    if (socket->state() != QLocalSocket::ConnectedState) {
        return;
    }
    socket->write(head.data(), static_cast<qint64>(head.size()));
    if (tailSize > 0) {
        socket->write(tail, static_cast<qint64>(tailSize));
    }
    socket->flush();
}

}  // namespace wib
