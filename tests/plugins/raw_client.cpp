// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/plugins/raw_client.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

namespace wib::testing {

namespace {

constexpr int kWaitMs = 10000;

}  // namespace

RawClient::RawClient(const QString& serverName) {
    socket_.connectToServer(serverName);
    socket_.waitForConnected(kWaitMs);
}

void RawClient::sendRaw(const QByteArray& bytes) {
    socket_.write(bytes);
    socket_.flush();
}

void RawClient::sendRaw(const msgpack::sbuffer& bytes) {
    sendRaw(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

std::uint32_t RawClient::send(const std::string& method, const msgpack::sbuffer& packedParams) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    const std::uint32_t msgid = nextId_++;
    packer.pack_array(4);
    packer.pack(0);
    packer.pack(msgid);
    packer.pack(method);
    buffer.write(packedParams.data(), packedParams.size());
    sendRaw(buffer);
    return msgid;
}

Response RawClient::call(const std::string& method, const msgpack::sbuffer& packedParams) {
    const std::uint32_t msgid = send(method, packedParams);
    std::optional<Response> response = next();
    if (!response || response->msgid != msgid) {
        throw std::runtime_error("no answer to " + method);
    }
    return std::move(*response);
}

Response RawClient::call(const std::string& method) {
    return call(method, Params());
}

bool RawClient::nextMessage(msgpack::object_handle& message) {
    while (!unpacker_.next(message)) {
        if (!fill()) {
            return false;
        }
    }
    return true;
}

std::optional<msgpack::object_handle> RawClient::nextNotification() {
    if (!notifications_.empty()) {
        msgpack::object_handle first = std::move(notifications_.front());
        notifications_.pop_front();
        return first;
    }
    msgpack::object_handle message;
    if (!nextMessage(message)) {
        return std::nullopt;
    }
    const msgpack::object& o = message.get();
    if (o.type != msgpack::type::ARRAY || o.via.array.size != 3) {
        throw std::runtime_error("not a notification");
    }
    return message;
}

std::optional<Response> RawClient::next() {
    msgpack::object_handle message;
    for (;;) {
        if (!nextMessage(message)) {
            return std::nullopt;
        }
        const msgpack::object& o = message.get();
        if (o.type != msgpack::type::ARRAY || o.via.array.size != 3) {
            break;
        }
        notifications_.push_back(std::move(message));
    }
    const msgpack::object& o = message.get();
    if (o.type != msgpack::type::ARRAY || o.via.array.size != 4) {
        throw std::runtime_error("not a response");
    }
    Response response;
    response.msgid = o.via.array.ptr[1].as<std::uint32_t>();
    const msgpack::object& error = o.via.array.ptr[2];
    if (error.type != msgpack::type::NIL) {
        response.errorCode = error.via.array.ptr[0].as<int>();
        response.errorMessage = error.via.array.ptr[1].as<std::string>();
    }
    response.message = std::move(message);
    return response;
}

bool RawClient::fill() {
    QDeadlineTimer deadline(kWaitMs);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        const qint64 available = socket_.bytesAvailable();
        if (available > 0) {
            unpacker_.reserve_buffer(static_cast<std::size_t>(available));
            const qint64 got = socket_.read(unpacker_.buffer(), available);
            unpacker_.buffer_consumed(static_cast<std::size_t>(got));
            return true;
        }
        if (socket_.state() == QLocalSocket::UnconnectedState) {
            return false;
        }
    }
    return false;
}

bool RawClient::waitClosed() {
    QDeadlineTimer deadline(kWaitMs);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        socket_.readAll();
        if (socket_.state() == QLocalSocket::UnconnectedState) {
            return true;
        }
    }
    return false;
}

void RawClient::settle() {
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
}

void RawClient::close() {
    socket_.abort();
    settle();
}

msgpack::sbuffer PlaneParams(int ubX, int ubY, const std::string& bytes) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(1);
    packer.pack_array(3);
    packer.pack(ubX);
    packer.pack(ubY);
    packer.pack_bin(static_cast<std::uint32_t>(bytes.size()));
    packer.pack_bin_body(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    return buffer;
}

}  // namespace wib::testing
