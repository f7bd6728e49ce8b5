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
// name. A call the program refuses throws WibbletonError with the program's
// error code; a lost connection throws std::system_error or std::runtime_error.

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

// A command parameter's or panel control's value.
using Value = std::variant<long long, double, std::string>;

struct CommandParam {
    std::string name;
    std::string caption;
    std::string type;  // integer, number, text, colour, boolean, choice
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

template <typename Stream>
void PackArg(msgpack::packer<Stream>& packer, const Value& value) {
    std::visit([&packer](const auto& v) { packer.pack(v); }, value);
}

template <typename Stream>
void PackArg(msgpack::packer<Stream>& packer, const std::map<std::string, Value>& values) {
    packer.pack_map(static_cast<std::uint32_t>(values.size()));
    for (const auto& [name, value] : values) {
        packer.pack(name);
        PackArg(packer, value);
    }
}

template <typename Stream, typename T>
void PackArg(msgpack::packer<Stream>& packer, const T& value) {
    packer.pack(value);
}

inline Value ToValue(const msgpack::object& o) {
    switch (o.type) {
        case msgpack::type::POSITIVE_INTEGER:
        case msgpack::type::NEGATIVE_INTEGER:
            return o.as<long long>();
        case msgpack::type::FLOAT32:
        case msgpack::type::FLOAT64:
            return o.as<double>();
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

}  // namespace detail

class Wibbleton_Class {
  public:
    // Connects to the program that started the plug-in.
    Wibbleton_Class()
        : Wibbleton_Class(detail::RequiredEnvironment("WIBBLETON_SERVER"),
                          detail::RequiredEnvironment("WIBBLETON_TOKEN")) {}

    Wibbleton_Class(const std::string& server, const std::string& token) {
        connectTo(ResolveServerPath(server));
        call("Wib_Connect", token);
    }

    Wibbleton_Class(const Wibbleton_Class&) = delete;
    Wibbleton_Class& operator=(const Wibbleton_Class&) = delete;
    ~Wibbleton_Class() {
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

    // Refresh, locking and undo.
    void Wib_Lock() { call("Wib_Lock"); }
    void Wib_Unlock() { call("Wib_Unlock"); }
    void Wib_HardUnlock() { call("Wib_HardUnlock"); }
    void Wib_LockInterface() { call("Wib_LockInterface"); }
    void Wib_UnlockInterface() { call("Wib_UnlockInterface"); }
    void Wib_LockBuffer() { call("Wib_LockBuffer"); }
    void Wib_UnlockBuffer() { call("Wib_UnlockBuffer"); }
    void Wib_Refresh() { call("Wib_Refresh"); }
    void Wib_CompleteRefresh() { call("Wib_CompleteRefresh"); }
    void Wib_SimpleRefresh(bool on) { call("Wib_SimpleRefresh", on); }
    void Wib_NoRefresh(bool on) { call("Wib_NoRefresh", on); }
    void Wib_RefreshTitleOnly(bool on) { call("Wib_RefreshTitleOnly", on); }
    void Wib_RefreshLayers() { call("Wib_RefreshLayers"); }
    void Wib_Refresh_BrushDisplays() { call("Wib_Refresh_BrushDisplays"); }
    void Wib_SaveUndo() { call("Wib_SaveUndo"); }
    void Wib_RestoreUndo() { call("Wib_RestoreUndo"); }

    // Status and messages.
    void Wib_StatusOpen() { call("Wib_StatusOpen"); }
    void Wib_StatusOpen(const std::string& caption) { call("Wib_StatusOpen", caption); }
    void Wib_Status(const std::string& text) { call("Wib_Status", text); }
    void Wib_SetProgress(float percent) { call("Wib_SetProgress", percent); }
    void Wib_StatusClose() { call("Wib_StatusClose"); }
    void Wib_PrintError(const std::string& text) { call("Wib_PrintError", text); }
    int Wib_MessageBox(const std::string& text, const std::string& title = "Wibbleton") {
        return call("Wib_MessageBox", text, title)->as<int>();
    }
    // 1 for the first button (Yes), 2 for the second (No).
    int Wib_QuestionBox(const std::string& text, const std::string& title = "Wibbleton") {
        return call("Wib_QuestionBox", text, title)->as<int>();
    }
    double Wib_ValueBox(const std::string& prompt, double initial, double min, double max) {
        return call("Wib_ValueBox", prompt, initial, min, max)->as<double>();
    }
    double Wib_ValueBox2(const std::string& title, const std::string& prompt, double initial,
                         double min, double max) {
        return call("Wib_ValueBox2", title, prompt, initial, min, max)->as<double>();
    }
    std::string Wib_RequestFile_Open(const std::string& title,
                                     const std::string& filter = "All files (*)") {
        return call("Wib_RequestFile_Open", title, filter)->as<std::string>();
    }
    std::string Wib_RequestFile_Save(const std::string& title,
                                     const std::string& filter = "All files (*)") {
        return call("Wib_RequestFile_Save", title, filter)->as<std::string>();
    }
    std::string Wib_DirectoryBrowse(const std::string& title) {
        return call("Wib_DirectoryBrowse", title)->as<std::string>();
    }

    // Pixel and buffer access.
    int Wib_BufferWidth() { return call("Wib_BufferWidth")->as<int>(); }
    int Wib_BufferHeight() { return call("Wib_BufferHeight")->as<int>(); }
    int Wib_GetRGB(int x, int y) { return call("Wib_GetRGB", x, y)->as<int>(); }
    int Wib_GetR(int x, int y) { return call("Wib_GetR", x, y)->as<int>(); }
    int Wib_GetG(int x, int y) { return call("Wib_GetG", x, y)->as<int>(); }
    int Wib_GetB(int x, int y) { return call("Wib_GetB", x, y)->as<int>(); }
    void Wib_SetRGB(int x, int y, int r, int g, int b) { call("Wib_SetRGB", x, y, r, g, b); }
    Plane Wib_GetRBuffer() { return planeCall("Wib_GetRBuffer"); }
    Plane Wib_GetGBuffer() { return planeCall("Wib_GetGBuffer"); }
    Plane Wib_GetBBuffer() { return planeCall("Wib_GetBBuffer"); }
    Plane Wib_GetABuffer() { return planeCall("Wib_GetABuffer"); }
    void Wib_SetRbuffer(const Plane& plane) { sendPlane("Wib_SetRbuffer", plane); }
    void Wib_SetGBuffer(const Plane& plane) { sendPlane("Wib_SetGBuffer", plane); }
    void Wib_SetBBuffer(const Plane& plane) { sendPlane("Wib_SetBBuffer", plane); }
    void Wib_SetABuffer(const Plane& plane) { sendPlane("Wib_SetABuffer", plane); }
    Plane Wib_GetSwapRBuffer() { return planeCall("Wib_GetSwapRBuffer"); }
    Plane Wib_GetSwapGBuffer() { return planeCall("Wib_GetSwapGBuffer"); }
    Plane Wib_GetSwapBBuffer() { return planeCall("Wib_GetSwapBBuffer"); }
    void Wib_SetSwapRBuffer(const Plane& plane) { sendPlane("Wib_SetSwapRBuffer", plane); }
    void Wib_SetSwapGBuffer(const Plane& plane) { sendPlane("Wib_SetSwapGBuffer", plane); }
    void Wib_SetSwapBBuffer(const Plane& plane) { sendPlane("Wib_SetSwapBBuffer", plane); }
    int Wib_GetAlphabits() { return call("Wib_GetAlphabits")->as<int>(); }
    void Wib_AlphaOn() { call("Wib_AlphaOn"); }
    void Wib_AlphaOff() { call("Wib_AlphaOff"); }
    // left, top, right, bottom; right < left when nothing is selected.
    std::array<int, 4> Wib_GetAlphaBounds() {
        return call("Wib_GetAlphaBounds")->as<std::array<int, 4>>();
    }
    // Nothing while no custom brush is active.
    std::optional<Plane> Wib_GetBrushRBuffer() { return brushCall("Wib_GetBrushRBuffer"); }
    std::optional<Plane> Wib_GetBrushGBuffer() { return brushCall("Wib_GetBrushGBuffer"); }
    std::optional<Plane> Wib_GetBrushBBuffer() { return brushCall("Wib_GetBrushBBuffer"); }
    std::optional<Plane> Wib_GetBrushABuffer() { return brushCall("Wib_GetBrushABuffer"); }
    void Wib_NewBuffer(int width, int height) { call("Wib_NewBuffer", width, height); }
    void Wib_ClearBuffer(int r, int g, int b) { call("Wib_ClearBuffer", r, g, b); }
    void Wib_ChangeBufferSize(int newWidth, int newHeight, int r, int g, int b, int anchor) {
        call("Wib_ChangeBufferSize", newWidth, newHeight, r, g, b, anchor);
    }
    void Wib_RenameBuffer(const std::string& name) { call("Wib_RenameBuffer", name); }

    // Program, commands and controls.
    int Wib_GetThreadcount() { return call("Wib_GetThreadcount")->as<int>(); }
    std::string Wib_GetAppDir() { return call("Wib_GetAppDir")->as<std::string>(); }
    std::string Wib_GetTempDir() { return call("Wib_GetTempDir")->as<std::string>(); }
    std::vector<Command> Wib_ListCommands();
    // True when the command ran, false when it refused.
    bool Wib_RunCommand(const std::string& id, const std::map<std::string, Value>& params = {}) {
        return call("Wib_RunCommand", id, params)->as<int>() == -1;
    }
    Value Wib_GetControl(const std::string& panel, const std::string& control) {
        return detail::ToValue(call("Wib_GetControl", panel, control).get());
    }
    void Wib_SetControl(const std::string& panel, const std::string& control, const Value& value) {
        call("Wib_SetControl", panel, control, value);
    }

  private:
    static constexpr std::size_t kReadChunk = 4 << 20;
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
        msgpack::sbuffer request;
        msgpack::packer<msgpack::sbuffer> packer(request);
        const std::uint32_t msgid = startRequest(packer, method, sizeof...(Args));
        (detail::PackArg(packer, args), ...);
        sendAll(request.data(), request.size(), nullptr, 0);
        return awaitResponse(msgid);
    }

    std::uint32_t startRequest(msgpack::packer<msgpack::sbuffer>& packer, const std::string& method,
                               std::size_t argCount) {
        const std::uint32_t msgid = nextId_++;
        packer.pack_array(4);
        packer.pack(0);
        packer.pack(msgid);
        packer.pack(method);
        packer.pack_array(static_cast<std::uint32_t>(argCount));
        return msgid;
    }

    // Writes the head and then the tail with as few system calls as the
    // socket allows, the tail straight from the caller's memory.
    void sendAll(const char* head, std::size_t headSize, const std::uint8_t* tail,
                 std::size_t tailSize) {
        iovec parts[2] = {{const_cast<char*>(head), headSize},
                          {const_cast<std::uint8_t*>(tail), tailSize}};
        int first = 0;
        const int count = tailSize > 0 ? 2 : 1;
        while (first < count) {
            msghdr message{};
            message.msg_iov = parts + first;
            message.msg_iovlen = static_cast<std::size_t>(count - first);
            // MSG_NOSIGNAL: a closed connection is an exception, not SIGPIPE.
            const ssize_t sent = ::sendmsg(fd_, &message, MSG_NOSIGNAL);
            if (sent < 0) {
                if (errno == EINTR) {
                    continue;
                }
                throw std::system_error(errno, std::generic_category(), "send to Wibbleton");
            }
            std::size_t left = static_cast<std::size_t>(sent);
            while (first < count && left >= parts[first].iov_len) {
                left -= parts[first].iov_len;
                ++first;
            }
            if (first < count) {
                parts[first].iov_base = static_cast<char*>(parts[first].iov_base) + left;
                parts[first].iov_len -= left;
            }
        }
    }

    msgpack::object_handle awaitResponse(std::uint32_t msgid) {
        msgpack::object_handle message;
        for (;;) {
            while (nextMessage(message)) {
                const msgpack::object& o = message.get();
                if (o.type != msgpack::type::ARRAY || o.via.array.size < 3) {
                    throw std::runtime_error("the program sent something other than msgpack-RPC");
                }
                const auto kind = o.via.array.ptr[0].as<int>();
                if (kind == 2) {
                    events_.push_back(
                        {o.via.array.ptr[1].as<std::string>(), msgpack::clone(o.via.array.ptr[2])});
                    continue;
                }
                if (kind != 1 || o.via.array.size != 4 ||
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
            receive();
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

    // Reads more of the stream into one buffer kept from call to call, so
    // that a plane lands in memory that is already mapped.
    void receive() {
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
        ssize_t got;
        do {
            got = ::recv(fd_, inbox_.get() + end_, inboxSize_ - end_, 0);
        } while (got < 0 && errno == EINTR);
        if (got < 0) {
            throw std::system_error(errno, std::generic_category(), "receive from Wibbleton");
        }
        if (got == 0) {
            throw std::runtime_error("Wibbleton closed the connection");
        }
        end_ += static_cast<std::size_t>(got);
    }

    Plane planeCall(const std::string& method) { return detail::ToPlane(request(method).get()); }

    std::optional<Plane> brushCall(const std::string& method) {
        const msgpack::object_handle result = request(method);
        if (result->type != msgpack::type::ARRAY) {
            return std::nullopt;
        }
        return detail::ToPlane(result.get());
    }

    void sendPlane(const std::string& method, const Plane& plane) {
        if (plane.data.size() !=
            static_cast<std::size_t>(plane.ubX + 1) * static_cast<std::size_t>(plane.ubY + 1)) {
            throw std::invalid_argument("plane data does not match its upper bounds");
        }
        msgpack::sbuffer head;
        msgpack::packer<msgpack::sbuffer> packer(head);
        const std::uint32_t msgid = startRequest(packer, method, 1);
        packer.pack_array(3);
        packer.pack(plane.ubX);
        packer.pack(plane.ubY);
        packer.pack_bin(static_cast<std::uint32_t>(plane.data.size()));
        sendAll(head.data(), head.size(), plane.data.data(), plane.data.size());
        awaitResponse(msgid);
    }

    int fd_ = -1;
    std::uint32_t nextId_ = 1;
    std::unique_ptr<char[]> inbox_;  // received bytes; [start_, end_) not yet parsed
    std::size_t inboxSize_ = 0;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    std::deque<Event> events_;
};

inline std::vector<Command> Wibbleton_Class::Wib_ListCommands() {
    const msgpack::object_handle list = call("Wib_ListCommands");
    std::vector<Command> commands;
    for (std::uint32_t i = 0; i < list->via.array.size; ++i) {
        const msgpack::object& entry = list->via.array.ptr[i];
        Command command;
        command.id = detail::Field(entry, "id").as<std::string>();
        command.caption = detail::Field(entry, "caption").as<std::string>();
        command.menu = detail::Field(entry, "menu").as<std::string>();
        const msgpack::object& params = detail::Field(entry, "params");
        for (std::uint32_t p = 0; p < params.via.array.size; ++p) {
            const msgpack::object& spec = params.via.array.ptr[p];
            CommandParam param;
            param.name = detail::Field(spec, "name").as<std::string>();
            param.caption = detail::Field(spec, "caption").as<std::string>();
            param.type = detail::Field(spec, "type").as<std::string>();
            param.min = detail::Field(spec, "min").as<double>();
            param.max = detail::Field(spec, "max").as<double>();
            param.initial = detail::ToValue(detail::Field(spec, "default"));
            param.choices = detail::Field(spec, "choices").as<std::vector<std::string>>();
            command.params.push_back(std::move(param));
        }
        commands.push_back(std::move(command));
    }
    return commands;
}

}  // namespace wibbleton
