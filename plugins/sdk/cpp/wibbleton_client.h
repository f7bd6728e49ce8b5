// SPDX-License-Identifier: MIT
#pragma once

// The Wibbleton plug-in client for C++: header-only, over a Unix-domain
// socket and msgpack-cxx. A plug-in that the program starts finds the server
// and the token in WIBBLETON_SERVER and WIBBLETON_TOKEN:
//
//     wibbleton::Wibbleton_Class wib;
//     wibbleton::Plane red = wib.Wib_GetRBuffer();
//     ...
//     wib.Wib_SetRbuffer(red);
//
// Every method of the automation object is a member function of the same
// name (wibbleton_methods.h, generated from the program's method table). A
// call the program refuses throws WibbletonError with the program's error
// code; a lost connection throws std::system_error or std::runtime_error.

#ifndef MSGPACK_NO_BOOST
#define MSGPACK_NO_BOOST
#endif
#include <msgpack.hpp>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace wibbleton {

// A call the program refused: 5 a bad argument, 9 a coordinate outside the
// plane, 438 an unknown method, 70 a wrong token.
class WibbletonError : public std::runtime_error {
  public:
    WibbletonError(int errorCode, const std::string& errorMessage)
        : std::runtime_error(std::to_string(errorCode) + ": " + errorMessage),
          code(errorCode),
          message(errorMessage) {}
    int code;
    std::string message;
};

// A byte plane with inclusive upper bounds: element (x, y) lies at
// y * (ubX + 1) + x. A document W x H has planes with upper bounds (W, H).
struct Plane {
    Plane() = default;
    Plane(int upperX, int upperY, std::uint8_t fill = 0)
        : ubX(upperX),
          ubY(upperY),
          data(static_cast<std::size_t>(upperX + 1) * static_cast<std::size_t>(upperY + 1), fill) {}

    std::uint8_t& at(int x, int y) { return data[index(x, y)]; }
    std::uint8_t at(int x, int y) const { return data[index(x, y)]; }

    int ubX = -1;
    int ubY = -1;
    std::vector<std::uint8_t> data;

  private:
    std::size_t index(int x, int y) const {
        if (x < 0 || y < 0 || x > ubX || y > ubY) {
            throw std::out_of_range("Subscript out of range");
        }
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(ubX + 1) +
               static_cast<std::size_t>(x);
    }
};

// A command parameter's or panel control's value; an integer list (a
// convolution kernel) is a vector.
using Value = std::variant<long long, double, std::string, std::vector<long long>>;

struct CommandParam {
    std::string name;
    std::string caption;
    std::string type;  // integer, number, text, colour, boolean, choice, path, integer list
    double min = 0;
    double max = 0;
    Value initial;  // the dialog's starting value now
    std::vector<std::string> choices;
};

struct Command {
    std::string id;
    std::string caption;
    std::string menu;
    std::vector<CommandParam> params;
};

// A notification from the program (WibMouseDown, WibEnd, ...).
struct Event {
    std::string method;
    msgpack::object_handle params;
};

// The socket path of a server name, as Qt's local sockets resolve it: a name
// that starts with '/' is the path; a bare name lies in $TMPDIR, else /tmp.
inline std::string ResolveServerPath(const std::string& name) {
    if (!name.empty() && name.front() == '/') {
        return name;
    }
    const char* tmp = std::getenv("TMPDIR");
    std::string folder = tmp && *tmp ? tmp : "/tmp";
    while (folder.size() > 1 && folder.back() == '/') {
        folder.pop_back();
    }
    return folder + "/" + name;
}

namespace detail {

inline std::string RequiredEnvironment(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') {
        throw std::runtime_error(std::string(name) +
                                 " is not set: start the plug-in from Wibbleton");
    }
    return value;
}

// A request on its way out: the msgpack bytes, and the planes whose bytes go
// out from the caller's memory at recorded offsets instead of being copied.
struct Outgoing {
    struct Splice {
        std::size_t at;
        const std::uint8_t* data;
        std::size_t size;
    };
    msgpack::sbuffer bytes;
    std::vector<Splice> splices;
};

inline void PackArg(Outgoing& out, const Value& value) {
    msgpack::packer<msgpack::sbuffer> packer(out.bytes);
    std::visit([&packer](const auto& v) { packer.pack(v); }, value);
}

inline void PackArg(Outgoing& out, const std::map<std::string, Value>& values) {
    msgpack::packer<msgpack::sbuffer>(out.bytes).pack_map(
        static_cast<std::uint32_t>(values.size()));
    for (const auto& [name, value] : values) {
        msgpack::packer<msgpack::sbuffer>(out.bytes).pack(name);
        PackArg(out, value);
    }
}

inline void PackArg(Outgoing& out, const Plane& plane) {
    if (plane.data.size() !=
        static_cast<std::size_t>(plane.ubX + 1) * static_cast<std::size_t>(plane.ubY + 1)) {
        throw std::invalid_argument("plane data does not match its upper bounds");
    }
    msgpack::packer<msgpack::sbuffer> packer(out.bytes);
    packer.pack_array(3);
    packer.pack(plane.ubX);
    packer.pack(plane.ubY);
    packer.pack_bin(static_cast<std::uint32_t>(plane.data.size()));
    out.splices.push_back({out.bytes.size(), plane.data.data(), plane.data.size()});
}

template <typename T>
void PackArg(Outgoing& out, const T& value) {
    msgpack::packer<msgpack::sbuffer>(out.bytes).pack(value);
}

inline Value ToValue(const msgpack::object& o) {
    switch (o.type) {
        case msgpack::type::POSITIVE_INTEGER:
        case msgpack::type::NEGATIVE_INTEGER:
            return o.as<long long>();
        case msgpack::type::FLOAT32:
        case msgpack::type::FLOAT64:
            return o.as<double>();
        case msgpack::type::ARRAY:
            return o.as<std::vector<long long>>();
        default:
            return o.as<std::string>();
    }
}

inline Plane ToPlane(const msgpack::object& o) {
    if (o.type != msgpack::type::ARRAY || o.via.array.size != 3 ||
        o.via.array.ptr[2].type != msgpack::type::BIN) {
        throw std::runtime_error("the program answered something other than a plane");
    }
    Plane plane;
    plane.ubX = o.via.array.ptr[0].as<int>();
    plane.ubY = o.via.array.ptr[1].as<int>();
    const msgpack::object_bin& bin = o.via.array.ptr[2].via.bin;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(bin.ptr);
    plane.data.assign(bytes, bytes + bin.size);
    return plane;
}

inline const msgpack::object& Field(const msgpack::object& map, const char* key) {
    for (std::uint32_t i = 0; i < map.via.map.size; ++i) {
        const msgpack::object& k = map.via.map.ptr[i].key;
        if (k.type == msgpack::type::STR && k.via.str.size == std::strlen(key) &&
            std::memcmp(k.via.str.ptr, key, k.via.str.size) == 0) {
            return map.via.map.ptr[i].val;
        }
    }
    throw std::runtime_error(std::string("the command table has no field ") + key);
}

inline std::vector<Command> ToCommands(const msgpack::object& list) {
    std::vector<Command> commands;
    for (std::uint32_t i = 0; i < list.via.array.size; ++i) {
        const msgpack::object& entry = list.via.array.ptr[i];
        Command command;
        command.id = Field(entry, "id").as<std::string>();
        command.caption = Field(entry, "caption").as<std::string>();
        command.menu = Field(entry, "menu").as<std::string>();
        const msgpack::object& params = Field(entry, "params");
        for (std::uint32_t p = 0; p < params.via.array.size; ++p) {
            const msgpack::object& spec = params.via.array.ptr[p];
            CommandParam param;
            param.name = Field(spec, "name").as<std::string>();
            param.caption = Field(spec, "caption").as<std::string>();
            param.type = Field(spec, "type").as<std::string>();
            param.min = Field(spec, "min").as<double>();
            param.max = Field(spec, "max").as<double>();
            param.initial = ToValue(Field(spec, "default"));
            param.choices = Field(spec, "choices").as<std::vector<std::string>>();
            command.params.push_back(std::move(param));
        }
        commands.push_back(std::move(command));
    }
    return commands;
}

// An answer as the typed member functions return it.
template <typename T>
T FromWire(const msgpack::object& o) {
    if constexpr (std::is_same_v<T, bool>) {
        return o.as<int>() == -1;  // the program's true
    } else if constexpr (std::is_same_v<T, Plane>) {
        return ToPlane(o);
    } else if constexpr (std::is_same_v<T, std::optional<Plane>>) {
        // A brush plane getter answers -1 while no custom brush is active.
        return o.type == msgpack::type::ARRAY ? std::optional<Plane>(ToPlane(o)) : std::nullopt;
    } else if constexpr (std::is_same_v<T, std::vector<Command>>) {
        return ToCommands(o);
    } else if constexpr (std::is_same_v<T, Value>) {
        return ToValue(o);
    } else if constexpr (std::is_same_v<T, std::map<std::string, Value>>) {
        std::map<std::string, Value> values;
        for (std::uint32_t i = 0; i < o.via.map.size; ++i) {
            values[o.via.map.ptr[i].key.as<std::string>()] = ToValue(o.via.map.ptr[i].val);
        }
        return values;
    } else {
        return o.as<T>();
    }
}

// Where the answer to `msgid` stands in `bytes` when it is a plane,
// [1, msgid, nil, [ubX, ubY, bin]]: complete up to the binary's header
// (Plane), too short to tell (Incomplete), or anything else (Other).
enum class PlaneHead { Plane, Incomplete, Other };

struct PlaneHeadFields {
    std::size_t headSize = 0;  // bytes up to the plane's first
    long long ubX = 0;
    long long ubY = 0;
    std::uint64_t size = 0;
};

// Reads a big-endian number of `count` bytes at `at`, moving past it.
inline std::uint64_t BigEndian(const std::uint8_t*& at, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = (value << 8) | *at++;
    }
    return value;
}

// An integer of any msgpack form; false when the bytes run out or are no integer.
inline bool ReadInteger(const std::uint8_t*& at, const std::uint8_t* end, long long& value,
                        bool& incomplete) {
    if (at == end) {
        incomplete = true;
        return false;
    }
    const std::uint8_t b = *at;
    if (b <= 0x7f || b >= 0xe0) {
        value = static_cast<std::int8_t>(b);
        ++at;
        return true;
    }
    static constexpr std::uint8_t kForms[] = {0xcc, 0xcd, 0xce, 0xd0, 0xd1, 0xd2};
    const auto form = std::find(std::begin(kForms), std::end(kForms), b);
    if (form == std::end(kForms)) {
        return false;
    }
    const std::size_t index = static_cast<std::size_t>(form - std::begin(kForms));
    const std::size_t count = std::size_t{1} << (index % 3);
    if (static_cast<std::size_t>(end - at) < count + 1) {
        incomplete = true;
        return false;
    }
    ++at;
    const std::uint64_t raw = BigEndian(at, count);
    if (index < 3) {
        value = static_cast<long long>(raw);
    } else {
        const int bits = static_cast<int>(8 * count);
        value = static_cast<long long>(raw ^ (std::uint64_t{1} << (bits - 1))) -
                (1LL << (bits - 1));
    }
    return true;
}

inline PlaneHead ReadPlaneHead(const char* bytes, std::size_t size, std::uint32_t msgid,
                               PlaneHeadFields& fields) {
    const auto* start = reinterpret_cast<const std::uint8_t*>(bytes);
    const std::uint8_t* at = start;
    const std::uint8_t* end = start + size;
    bool incomplete = false;
    auto expect = [&](std::uint8_t b) {
        if (at == end) {
            incomplete = true;
            return false;
        }
        return *at++ == b;
    };
    long long id = 0;
    if (!expect(0x94) || !expect(0x01) || !ReadInteger(at, end, id, incomplete) ||
        id != static_cast<long long>(msgid) || !expect(0xc0) || !expect(0x93) ||
        !ReadInteger(at, end, fields.ubX, incomplete) ||
        !ReadInteger(at, end, fields.ubY, incomplete)) {
        return incomplete ? PlaneHead::Incomplete : PlaneHead::Other;
    }
    if (at == end) {
        return PlaneHead::Incomplete;
    }
    const std::uint8_t form = *at;
    const std::size_t count = form == 0xc4 ? 1 : form == 0xc5 ? 2 : form == 0xc6 ? 4 : 0;
    if (count == 0) {
        return PlaneHead::Other;
    }
    if (static_cast<std::size_t>(end - at) < count + 1) {
        return PlaneHead::Incomplete;
    }
    ++at;
    fields.size = BigEndian(at, count);
    fields.headSize = static_cast<std::size_t>(at - start);
    return PlaneHead::Plane;
}

}  // namespace detail

// The connection to the program: everything but the methods, which
// Wibbleton_Class adds.
class Connection {
  public:
    // Connects to the program that started the plug-in.
    Connection()
        : Connection(detail::RequiredEnvironment("WIBBLETON_SERVER"),
                     detail::RequiredEnvironment("WIBBLETON_TOKEN")) {}

    Connection(const std::string& server, const std::string& token) {
        connectTo(ResolveServerPath(server));
        call("Wib_Connect", token);
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    // Calls any method by name and returns its raw result.
    template <typename... Args>
    msgpack::object_handle call(const std::string& method, const Args&... args) {
        return msgpack::clone(request(method, args...).get());
    }

    // Notifications that have arrived so far, oldest first; taking them empties the queue.
    std::deque<Event> events() { return std::exchange(events_, {}); }

    // The next notification, waiting for it as long as it takes: after
    // Wib_ListenEvents(-1) the canvas's WibMouseDown, WibMouseMove, WibMouseUp
    // ([button, shift, x, y, pressure]) and WibEnd ([]).
    Event waitEvent() {
        msgpack::object_handle message;
        while (events_.empty()) {
            if (!nextMessage(message)) {
                receive();
            } else if (!queueIfNotification(message.get())) {
                throw std::runtime_error("the program answered out of turn");
            }
        }
        Event event = std::move(events_.front());
        events_.pop_front();
        return event;
    }

  protected:
    template <typename Result, typename... Args>
    Result invoke(const std::string& method, const Args&... args) {
        if constexpr (std::is_same_v<Result, Plane>) {
            Plane plane;
            invokeInto(plane, method, args...);
            return plane;
        } else {
            const msgpack::object_handle result = request(method, args...);
            if constexpr (!std::is_void_v<Result>) {
                return detail::FromWire<Result>(result.get());
            }
        }
    }

    // A call answered with a plane, whose bytes are received straight into
    // `into`: its memory is reused when the size has not changed.
    template <typename... Args>
    void invokeInto(Plane& into, const std::string& method, const Args&... args) {
        receivePlane(send(method, args...), into);
    }

  private:
    static constexpr std::size_t kReadChunk = 4 << 20;
    // Read at a time while a plane's header is awaited, so that few of its
    // bytes land anywhere but in the plane.
    static constexpr std::size_t kHeadRead = 64;
    static constexpr int kSocketBufferBytes = 4 << 20;

    void connectTo(const std::string& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (path.size() >= sizeof address.sun_path) {
            throw std::runtime_error("server path too long: " + path);
        }
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
        fd_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (fd_ < 0) {
            throw std::system_error(errno, std::generic_category(), "socket");
        }
        const int size = kSocketBufferBytes;
        ::setsockopt(fd_, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
        ::setsockopt(fd_, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
        if (::connect(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            const int error = errno;
            ::close(fd_);
            fd_ = -1;
            throw std::system_error(error, std::generic_category(), "connect to " + path);
        }
    }

    // The result refers to the receive buffer: use it before the next request.
    template <typename... Args>
    msgpack::object_handle request(const std::string& method, const Args&... args) {
        return awaitResponse(send(method, args...));
    }

    // Sends a request; returns its msgid.
    template <typename... Args>
    std::uint32_t send(const std::string& method, const Args&... args) {
        const std::uint32_t msgid = nextId_++;
        detail::Outgoing out;
        msgpack::packer<msgpack::sbuffer> packer(out.bytes);
        packer.pack_array(4);
        packer.pack(0);
        packer.pack(msgid);
        packer.pack(method);
        packer.pack_array(static_cast<std::uint32_t>(sizeof...(Args)));
        (detail::PackArg(out, args), ...);
        sendAll(out);
        return msgid;
    }

    // Writes the request with as few system calls as the socket allows,
    // plane bytes straight from the caller's memory.
    void sendAll(const detail::Outgoing& out) {
        std::vector<iovec> parts;
        std::size_t from = 0;
        for (const detail::Outgoing::Splice& splice : out.splices) {
            parts.push_back({const_cast<char*>(out.bytes.data()) + from, splice.at - from});
            parts.push_back({const_cast<std::uint8_t*>(splice.data), splice.size});
            from = splice.at;
        }
        parts.push_back({const_cast<char*>(out.bytes.data()) + from, out.bytes.size() - from});
        std::size_t first = 0;
        while (first < parts.size()) {
            msghdr message{};
            message.msg_iov = parts.data() + first;
            message.msg_iovlen = parts.size() - first;
            // MSG_NOSIGNAL: a closed connection is an exception, not SIGPIPE.
            const ssize_t sent = ::sendmsg(fd_, &message, MSG_NOSIGNAL);
            if (sent < 0) {
                if (errno == EINTR) {
                    continue;
                }
                throw std::system_error(errno, std::generic_category(), "send to Wibbleton");
            }
            std::size_t left = static_cast<std::size_t>(sent);
            while (first < parts.size() && left >= parts[first].iov_len) {
                left -= parts[first].iov_len;
                ++first;
            }
            if (first < parts.size()) {
                parts[first].iov_base = static_cast<char*>(parts[first].iov_base) + left;
                parts[first].iov_len -= left;
            }
        }
    }

    msgpack::object_handle awaitResponse(std::uint32_t msgid) {
        msgpack::object_handle message;
        for (;;) {
            while (nextMessage(message)) {
                if (auto result = takeResponse(message, msgid)) {
                    return std::move(*result);
                }
            }
            receive();
        }
    }

    // The result of the answer to `msgid`; nothing when `message` was a
    // notification, which waits in events(). A refusal throws.
    std::optional<msgpack::object_handle> takeResponse(msgpack::object_handle& message,
                                                       std::uint32_t msgid) {
        const msgpack::object& o = message.get();
        if (o.type != msgpack::type::ARRAY || o.via.array.size < 3) {
            throw std::runtime_error("the program sent something other than msgpack-RPC");
        }
        if (queueIfNotification(o)) {
            return std::nullopt;
        }
        if (o.via.array.ptr[0].as<int>() != 1 || o.via.array.size != 4 ||
            o.via.array.ptr[1].as<std::uint32_t>() != msgid) {
            throw std::runtime_error("the program answered out of turn");
        }
        const msgpack::object& error = o.via.array.ptr[2];
        if (error.type != msgpack::type::NIL) {
            throw WibbletonError(error.via.array.ptr[0].as<int>(),
                                 error.via.array.ptr[1].as<std::string>());
        }
        return msgpack::object_handle(o.via.array.ptr[3], std::move(message.zone()));
    }

    // Queues a notification [2, method, params]; false for anything else.
    bool queueIfNotification(const msgpack::object& o) {
        if (o.type != msgpack::type::ARRAY || o.via.array.size != 3 ||
            o.via.array.ptr[0].as<int>() != 2) {
            return false;
        }
        events_.push_back({o.via.array.ptr[1].as<std::string>(), msgpack::clone(o.via.array.ptr[2])});
        return true;
    }

    // Waits for the answer to `msgid`, a plane. Its bytes are received into
    // `into` itself; only those that came in the same read as its header are
    // copied there. Notifications before it wait in events().
    void receivePlane(std::uint32_t msgid, Plane& into) {
        for (;;) {
            detail::PlaneHeadFields head;
            switch (detail::ReadPlaneHead(inbox_.get() + start_, end_ - start_, msgid, head)) {
                case detail::PlaneHead::Plane:
                    fillPlane(head, into);
                    return;
                case detail::PlaneHead::Incomplete:
                    receive(kHeadRead);
                    break;
                case detail::PlaneHead::Other: {
                    msgpack::object_handle message;
                    if (!nextMessage(message)) {
                        receive();
                    } else if (auto result = takeResponse(message, msgid)) {
                        into = detail::ToPlane(result->get());
                        return;
                    }
                    break;
                }
            }
        }
    }

    void fillPlane(const detail::PlaneHeadFields& head, Plane& into) {
        if (head.ubX < -1 || head.ubY < -1 ||
            head.size != static_cast<std::uint64_t>(head.ubX + 1) *
                             static_cast<std::uint64_t>(head.ubY + 1)) {
            throw std::runtime_error("the program answered a plane of the wrong size");
        }
        into.ubX = static_cast<int>(head.ubX);
        into.ubY = static_cast<int>(head.ubY);
        into.data.resize(static_cast<std::size_t>(head.size));
        start_ += head.headSize;
        const std::size_t present = std::min(into.data.size(), end_ - start_);
        std::memcpy(into.data.data(), inbox_.get() + start_, present);
        start_ += present;
        std::size_t filled = present;
        while (filled < into.data.size()) {
            filled += receiveInto(reinterpret_cast<char*>(into.data.data()) + filled,
                                  into.data.size() - filled);
        }
    }

    // Binaries (planes) are left in the receive buffer and copied out once.
    static bool ReferenceBinaries(msgpack::type::object_type type, std::size_t, void*) {
        return type == msgpack::type::BIN;
    }

    // The next whole message in the receive buffer, if one is there.
    bool nextMessage(msgpack::object_handle& message) {
        if (start_ == end_) {
            return false;
        }
        std::size_t offset = start_;
        try {
            message = msgpack::unpack(inbox_.get(), end_, offset, &ReferenceBinaries);
        } catch (const msgpack::insufficient_bytes&) {
            return false;
        }
        start_ = offset;
        return true;
    }

    // Reads more of the stream, at most `most` bytes, into one buffer kept
    // from call to call, so that what arrives lands in memory already mapped.
    void receive(std::size_t most = kReadChunk) {
        if (start_ > 0) {
            std::memmove(inbox_.get(), inbox_.get() + start_, end_ - start_);
            end_ -= start_;
            start_ = 0;
        }
        if (inboxSize_ - end_ < kReadChunk / 4) {
            const std::size_t size = std::max(kReadChunk, 2 * inboxSize_);
            std::unique_ptr<char[]> larger(new char[size]);
            std::memcpy(larger.get(), inbox_.get(), end_);
            inbox_ = std::move(larger);
            inboxSize_ = size;
        }
        end_ += receiveInto(inbox_.get() + end_, std::min(most, inboxSize_ - end_));
    }

    // Bytes received into `at`, at least one.
    std::size_t receiveInto(char* at, std::size_t room) {
        ssize_t got;
        do {
            got = ::recv(fd_, at, room, 0);
        } while (got < 0 && errno == EINTR);
        if (got < 0) {
            throw std::system_error(errno, std::generic_category(), "receive from Wibbleton");
        }
        if (got == 0) {
            throw std::runtime_error("Wibbleton closed the connection");
        }
        return static_cast<std::size_t>(got);
    }

    int fd_ = -1;
    std::uint32_t nextId_ = 1;
    std::unique_ptr<char[]> inbox_;  // received bytes; [start_, end_) not yet parsed
    std::size_t inboxSize_ = 0;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    std::deque<Event> events_;
};

}  // namespace wibbleton

// The methods, one for every method of the automation object.
#include "wibbleton_methods.h"
