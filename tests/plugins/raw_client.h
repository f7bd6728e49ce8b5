// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <QByteArray>
#include <QLocalSocket>
#include <QString>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace wib::testing {

// One answer [1, msgid, error, result] as a test reads it.
struct Response {
    msgpack::object_handle message;
    std::uint32_t msgid = 0;
    int errorCode = 0;  // 0 on success
    std::string errorMessage;
    const msgpack::object& result() const { return message.get().via.array.ptr[3]; }
};

// A plug-in's side of the wire for tests that run the server in the same
// thread: it writes raw bytes or requests, then runs the event loop (so the
// server gets its turn) until the answer arrives. Waits give up after ten
// seconds so that a broken server fails the test instead of hanging it.
class RawClient {
  public:
    explicit RawClient(const QString& serverName);

    void sendRaw(const QByteArray& bytes);
    void sendRaw(const msgpack::sbuffer& bytes);

    // Packs and sends [0, msgid, method, params]; returns the msgid used.
    std::uint32_t send(const std::string& method, const msgpack::sbuffer& packedParams);
    // Sends a request and waits for its answer.
    Response call(const std::string& method, const msgpack::sbuffer& packedParams);
    Response call(const std::string& method);
    // The next answer that arrives; nothing when none comes or the server
    // closes. Notifications that come first are kept for nextNotification.
    std::optional<Response> next();
    // The next notification [2, method, params], one kept by next() first;
    // nothing when none comes.
    std::optional<msgpack::object_handle> nextNotification();
    // Waits until the server has closed the connection.
    bool waitClosed();
    // Runs the event loop briefly so the server sees what was sent.
    static void settle();
    void close();

  private:
    bool fill();
    bool nextMessage(msgpack::object_handle& message);

    QLocalSocket socket_;
    msgpack::unpacker unpacker_;
    std::uint32_t nextId_ = 1;
    std::deque<msgpack::object_handle> notifications_;
};

// Packs the arguments of one call as a msgpack array.
template <typename... Args>
msgpack::sbuffer Params(const Args&... args) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(sizeof...(Args));
    (packer.pack(args), ...);
    return buffer;
}

// A plane [ubX, ubY, bin] packed as one argument.
msgpack::sbuffer PlaneParams(int ubX, int ubY, const std::string& bytes);

}  // namespace wib::testing
