// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_connection.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>

namespace wib {

namespace {

// Big enough that a whole plane moves in a few system calls. The system may
// cap it lower; that only costs speed.
constexpr int kSocketBufferBytes = 4 << 20;

void RaiseSocketBuffers(int fd) {
    const int size = kSocketBufferBytes;
    setsockopt(fd, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
}

// Bytes the kernel took without waiting; 0 when it took none, -1 when the
// connection is broken.
ssize_t SendNow(int fd, const char* head, std::size_t headSize, const char* tail,
                std::size_t tailSize) {
    iovec parts[2] = {{const_cast<char*>(head), headSize}, {const_cast<char*>(tail), tailSize}};
    msghdr message{};
    message.msg_iov = headSize > 0 ? parts : parts + 1;
    message.msg_iovlen = (headSize > 0 ? 1 : 0) + (tailSize > 0 ? 1 : 0);
    ssize_t sent;
    do {
        sent = sendmsg(fd, &message, MSG_DONTWAIT | MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    if (sent < 0) {
        return errno == EAGAIN || errno == EWOULDBLOCK ? 0 : -1;
    }
    return sent;
}

}  // namespace

PluginConnection::PluginConnection(int descriptor, std::function<void(PluginConnection&)> wake)
    : fd_(descriptor),
      readNotifier_(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read)),
      writeNotifier_(std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write)),
      wake_(std::move(wake)) {
    RaiseSocketBuffers(fd_);
    writeNotifier_->setEnabled(false);
    QObject::connect(readNotifier_.get(), &QSocketNotifier::activated, [this] { wake_(*this); });
    QObject::connect(writeNotifier_.get(), &QSocketNotifier::activated, [this] { flushOutbox(); });
}

PluginConnection::~PluginConnection() {
    readNotifier_.reset();
    writeNotifier_.reset();
    if (fd_ >= 0) {
        ::close(fd_);
    }
}

PluginConnection::Received PluginConnection::receive() {
    if (failed_) {
        return Received::Closed;
    }
    if (!open()) {
        return Received::Nothing;
    }
    const std::size_t room = reader.wanted();
    ssize_t got;
    do {
        got = recv(fd_, reader.reserve(room), room, MSG_DONTWAIT);
    } while (got < 0 && errno == EINTR);
    if (got == 0) {
        return Received::Closed;
    }
    if (got < 0) {
        return errno == EAGAIN || errno == EWOULDBLOCK ? Received::Nothing : Received::Closed;
    }
    return reader.commit(static_cast<std::size_t>(got)) ? Received::Some : Received::Broken;
}

void PluginConnection::send(const msgpack::sbuffer& head, const char* tail, std::size_t tailSize) {
    if (!open()) {
        return;
    }
    // With nothing queued, the kernel takes what it can straight from the
    // caller's memory (a plane of the document); only the rest is copied.
    std::size_t sent = 0;
    if (outbox_.empty()) {
        const ssize_t now = SendNow(fd_, head.data(), head.size(), tail, tailSize);
        if (now < 0) {
            fail();
            return;
        }
        sent = static_cast<std::size_t>(now);
    }
    std::vector<char> rest;
    rest.reserve(head.size() + tailSize - sent);
    if (sent < head.size()) {
        rest.insert(rest.end(), head.data() + sent, head.data() + head.size());
        sent = head.size();
    }
    rest.insert(rest.end(), tail + (sent - head.size()), tail + tailSize);
    if (rest.empty()) {
        return;
    }
    unsent_ += rest.size();
    outbox_.push_back(std::move(rest));
    writeNotifier_->setEnabled(true);
}

void PluginConnection::flushOutbox() {
    while (!outbox_.empty() && open()) {
        const std::vector<char>& front = outbox_.front();
        const ssize_t sent =
            SendNow(fd_, nullptr, 0, front.data() + outboxFront_, front.size() - outboxFront_);
        if (sent <= 0) {
            if (sent < 0) {
                fail();
                wake_(*this);
            }
            return;
        }
        unsent_ -= static_cast<std::size_t>(sent);
        outboxFront_ += static_cast<std::size_t>(sent);
        if (outboxFront_ == front.size()) {
            outbox_.pop_front();
            outboxFront_ = 0;
        }
    }
    writeNotifier_->setEnabled(false);
    wake_(*this);
}

void PluginConnection::fail() {
    failed_ = true;
    writeNotifier_->setEnabled(false);
}

void PluginConnection::setReading(bool on) {
    readNotifier_->setEnabled(on && open());
}

void PluginConnection::shutDown() {
    shut_ = true;
    readNotifier_->setEnabled(false);
    writeNotifier_->setEnabled(false);
    outbox_.clear();
    outbox_.shrink_to_fit();
    unsent_ = 0;
    ::shutdown(fd_, SHUT_RDWR);
}

}  // namespace wib
