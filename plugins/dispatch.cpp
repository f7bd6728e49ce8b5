// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/dispatch.h"

#include <new>

namespace wib {

CallResult Dispatch(CallContext& context, const std::string& method, const msgpack::object& params,
                    PlanePayloads& payloads) {
    const MethodSpec* spec = FindMethod(method);
    if (spec == nullptr) {
        return {Reply::Nil(), MakeError(kErrorUnknownMethod)};
    }
    try {
        CallArgs args = DecodeArgs(method, spec->args, params, payloads);
        return {spec->handler(context, args), std::nullopt};
    } catch (const RpcError& error) {
        return {Reply::Nil(), error};
    } catch (const SubscriptError&) {
        return {Reply::Nil(), MakeError(kErrorSubscript)};
    } catch (const std::bad_alloc&) {
        return {Reply::Nil(), MakeError(kErrorOutOfMemory)};
    } catch (const std::exception& error) {
        return {Reply::Nil(), BadCall(error.what())};
    }
}

}  // namespace wib
