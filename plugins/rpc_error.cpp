// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/rpc_error.h"

namespace wib {

const char* ErrorText(int code) {
    switch (code) {
        case kErrorBadCall:
            return "Invalid procedure call or argument";
        case kErrorOutOfMemory:
            return "Out of memory";
        case kErrorSubscript:
            return "Subscript out of range";
        case kErrorPermission:
            return "Permission denied";
        case kErrorUnknownMethod:
            return "Object doesn't support this property or method";
        default:
            return "Automation error";
    }
}

RpcError MakeError(int code) {
    return {code, ErrorText(code)};
}

RpcError BadCall(const std::string& detail) {
    return {kErrorBadCall, std::string(ErrorText(kErrorBadCall)) + ": " + detail};
}

}  // namespace wib
