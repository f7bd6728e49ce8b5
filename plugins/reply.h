// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <cstdint>
#include <string>

#include "core/plane.h"

namespace wib {

// The result of one call, ready to send: a packed value, and for a plane the
// bytes that follow its header. A borrowed plane is sent straight from the
// document; the reply goes out before anything else can change it.
class Reply {
  public:
    static Reply Nil();
    static Reply Integer(long long value);
    static Reply Number(double value);
    static Reply Text(const std::string& text);
    static Reply OwnedPlane(Plane&& plane);
    static Reply BorrowedPlane(const Plane& plane);
    // A value the handler packed itself (arrays, maps).
    static Reply Packed(msgpack::sbuffer&& packed);

    const msgpack::sbuffer& head() const { return head_; }
    const char* tail() const;
    std::size_t tailSize() const;

  private:
    void packPlaneHeader(const Plane& plane);

    msgpack::sbuffer head_;
    Plane owned_;
    const Plane* borrowed_ = nullptr;
};

}  // namespace wib
