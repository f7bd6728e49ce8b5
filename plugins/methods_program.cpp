// SPDX-License-Identifier: GPL-3.0-or-later
// The connection itself, facts about the program, and the bridges to the
// command table and the panel controls that make everything scriptable.

#include "plugins/method_families.h"
#include "plugins/rpc_error.h"
#include "plugins/token.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Program, commands and controls";

using Packer = msgpack::packer<msgpack::sbuffer>;

void PackValue(Packer& packer, const ParamValue& value) {
    std::visit([&packer](const auto& v) { packer.pack(v); }, value);
}

void PackParam(Packer& packer, const ParamSpec& spec, const ParamValue& initial) {
    packer.pack_map(7);
    packer.pack("name");
    packer.pack(spec.name);
    packer.pack("caption");
    packer.pack(spec.caption);
    packer.pack("type");
    packer.pack(ParamTypeName(spec.type));
    packer.pack("min");
    packer.pack(spec.minimum);
    packer.pack("max");
    packer.pack(spec.maximum);
    packer.pack("default");
    PackValue(packer, initial);
    packer.pack("choices");
    packer.pack(spec.choices);
}

Reply ListCommands(CallContext& c) {
    const CommandRegistry& registry = c.host.commands;
    msgpack::sbuffer packed;
    Packer packer(packed);
    packer.pack_array(static_cast<std::uint32_t>(registry.all().size()));
    for (const CommandSpec& command : registry.all()) {
        const auto initial = registry.defaults(c.workspace(), command);
        packer.pack_map(4);
        packer.pack("id");
        packer.pack(command.id);
        packer.pack("caption");
        packer.pack(command.caption);
        packer.pack("menu");
        packer.pack(command.menu);
        packer.pack("params");
        packer.pack_array(static_cast<std::uint32_t>(command.params.size()));
        for (const ParamSpec& spec : command.params) {
            PackParam(packer, spec, initial.at(spec.name));
        }
    }
    return Reply::Packed(std::move(packed));
}

Reply RunCommand(CallContext& c, const CallArgs& args) {
    static const std::map<std::string, ParamValue> kNone;
    const CommandOutcome outcome =
        c.host.commands.run(c.workspace(), args.text(0), args.size() > 1 ? args.params(1) : kNone);
    switch (outcome.status) {
        case CommandOutcome::Status::Done:
            // A command that starts a plug-in answers its process id.
            return Reply::Integer(outcome.processId.value_or(-1));
        case CommandOutcome::Status::Refused:
            return Reply::Integer(0);
        default:
            throw BadCall(outcome.error);
    }
}

Reply ControlReply(const ParamValue& value) {
    msgpack::sbuffer packed;
    Packer packer(packed);
    PackValue(packer, value);
    return Reply::Packed(std::move(packed));
}

}  // namespace

std::vector<MethodSpec> ProgramMethods() {
    return {
        {"Wib_Connect",
         kFamily,
         {{"token", ArgType::Text}},
         {ResultType::Integer, "integer: -1"},
         "Must be the first request on a connection, with the token from WIBBLETON_TOKEN. "
         "Anything else first, or a wrong token, gets error 70 and the connection is closed.",
         [](CallContext& c, CallArgs& args) {
             if (!TokenMatches(args.text(0), c.server.token)) {
                 throw MakeError(kErrorPermission);
             }
             return Reply::Integer(-1);
         }},
        {"Wib_GetThreadcount",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "How many worker threads the program's parallel work uses.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(c.host.threadCount); }},
        {"Wib_GetAppDir",
         kFamily,
         {},
         {ResultType::Text, "text"},
         "The program's folder.",
         [](CallContext& c, CallArgs&) { return Reply::Text(c.host.appDir); }},
        {"Wib_GetTempDir",
         kFamily,
         {},
         {ResultType::Text, "text"},
         "A folder for temporary files.",
         [](CallContext& c, CallArgs&) { return Reply::Text(c.host.tempDir); }},
        {"Wib_ListCommands",
         kFamily,
         {},
         {ResultType::Commands,
          "array of maps {id, caption, menu, params: [{name, caption, type, min, max, default, "
          "choices}]}"},
         "The program's command table: every menu command and the values its dialog asks for, "
         "with their starting values now. Captions are the menu's, '&' marking the access key.",
         [](CallContext& c, CallArgs&) { return ListCommands(c); }},
        {"Wib_RunCommand",
         kFamily,
         {{"id", ArgType::Text}, {"params", ArgType::Params, true}},
         {ResultType::Integer,
          "integer: -1 when the command ran, 0 when it refused (it has told the user why); a "
          "plug-in command answers the process id of the plug-in it started, 0 when the file "
          "could not be started"},
         "Runs a menu command as the menu does, taking its dialog's values from params and the "
         "dialog's starting values for the rest. An unknown id, name, type or range is error 5 "
         "and nothing runs.",
         [](CallContext& c, CallArgs& args) { return RunCommand(c, args); }},
        {"Wib_GetControl",
         kFamily,
         {{"panel", ArgType::Text}, {"control", ArgType::Text}},
         {ResultType::Value, "the control's value: integer (check boxes -1 / 0), number or text"},
         "Reads a panel control by the panel's and the control's object names. An unknown "
         "panel or control is error 5.",
         [](CallContext& c, CallArgs& args) {
             const auto value = c.host.controls.get(args.text(0), args.text(1));
             if (!value) {
                 throw BadCall("no control " + args.text(0) + "." + args.text(1));
             }
             return ControlReply(*value);
         }},
        {"Wib_SetControl",
         kFamily,
         {{"panel", ArgType::Text}, {"control", ArgType::Text}, {"value", ArgType::Value}},
         {ResultType::Nothing, "nothing"},
         "Sets a panel control and runs its change handler, as a user's click would. An "
         "unknown panel or control, or a value that does not suit it, is error 5.",
         [](CallContext& c, CallArgs& args) {
             if (!c.host.controls.set(args.text(0), args.text(1), args.value(2))) {
                 throw BadCall("cannot set " + args.text(0) + "." + args.text(1) +
                               " to that value");
             }
             return Reply::Nil();
         }},
    };
}

}  // namespace wib
