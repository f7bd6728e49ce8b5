// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/reply.h"

namespace wib {

namespace {

template <typename T>
Reply PackOne(const T& value) {
    msgpack::sbuffer buffer;
    msgpack::pack(buffer, value);
    return Reply::Packed(std::move(buffer));
}

}  // namespace

Reply Reply::Nil() {
    return PackOne(msgpack::type::nil_t());
}
Reply Reply::Integer(long long value) {
    return PackOne(value);
}
Reply Reply::Number(double value) {
    return PackOne(value);
}
Reply Reply::Text(const std::string& text) {
    return PackOne(text);
}

Reply Reply::OwnedPlane(Plane&& plane) {
    Reply reply;
    reply.owned_ = std::move(plane);
    reply.packPlaneHeader(reply.owned_);
    return reply;
}

Reply Reply::BorrowedPlane(const Plane& plane) {
    Reply reply;
    reply.borrowed_ = &plane;
    reply.packPlaneHeader(plane);
    return reply;
}

Reply Reply::Packed(msgpack::sbuffer&& packed) {
    Reply reply;
    reply.head_ = std::move(packed);
    return reply;
}

void Reply::packPlaneHeader(const Plane& plane) {
    msgpack::packer<msgpack::sbuffer> packer(head_);
    packer.pack_array(3);
    packer.pack(plane.ubX());
    packer.pack(plane.ubY());
    packer.pack_bin(static_cast<std::uint32_t>(plane.byteCount()));
}

const char* Reply::tail() const {
    const Plane& plane = borrowed_ ? *borrowed_ : owned_;
    return reinterpret_cast<const char*>(plane.data());
}

std::size_t Reply::tailSize() const {
    return borrowed_ ? borrowed_->byteCount() : owned_.byteCount();
}

}  // namespace wib
