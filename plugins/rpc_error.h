// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// The error codes plug-ins see, with the classic automation host's numbers.
inline constexpr int kErrorBadCall = 5;
inline constexpr int kErrorOutOfMemory = 7;
inline constexpr int kErrorSubscript = 9;
inline constexpr int kErrorPermission = 70;
inline constexpr int kErrorUnknownMethod = 438;

// The fixed text of each code.
const char* ErrorText(int code);

// A failed call, answered as [code, message]. A bad call may say more after
// the fixed text: "Invalid procedure call or argument: x must be from ...".
struct RpcError {
    int code;
    std::string message;
};

RpcError MakeError(int code);
RpcError BadCall(const std::string& detail);

}  // namespace wib
