// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace wib {

// The bytes of one large binary of a request, received into memory of their
// own so that a plane setter adopts them without another copy. In the decoded
// message the binary is replaced by an extension value of type
// kPayloadExtension whose two data bytes give the payload's index (big-endian)
// among the message's payloads. Plug-ins cannot send that type: the guard
// refuses extension types on the wire.
struct PlanePayload {
    std::unique_ptr<std::uint8_t[]> bytes;
    std::size_t size = 0;
};

using PlanePayloads = std::vector<PlanePayload>;

inline constexpr std::int8_t kPayloadExtension = 1;

// Binaries at least this long are received on their own; shorter ones stay in
// the message (the header of a longer one is always five bytes long).
inline constexpr std::size_t kPayloadMinBytes = 64 * 1024;

}  // namespace wib
