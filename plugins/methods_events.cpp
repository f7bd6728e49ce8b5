// SPDX-License-Identifier: GPL-3.0-or-later
// Canvas events: a plug-in (a brush plug-in, say) takes the canvas's pointer
// input for itself and gets it as notifications.

#include "plugins/canvas_events.h"
#include "plugins/method_families.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Events";

msgpack::sbuffer PackEvent(const std::string& event, const CanvasPointer& pointer) {
    msgpack::sbuffer packed;
    msgpack::packer<msgpack::sbuffer> packer(packed);
    packer.pack_array(3);
    packer.pack(2);
    packer.pack(event);
    if (event == "WibEnd") {
        packer.pack_array(0);
    } else {
        packer.pack_array(5);
        packer.pack(pointer.button);
        packer.pack(pointer.shift);
        packer.pack(pointer.x);
        packer.pack(pointer.y);
        packer.pack(pointer.pressure);
    }
    return packed;
}

Reply ListenEvents(CallContext& c, CallArgs& args) {
    CanvasEvents* events = c.host.canvasEvents;
    if (events == nullptr) {
        return Reply::Integer(0);
    }
    ConnectionState& connection = c.connection;
    const bool holdsTurn =
        connection.canvasTurnNumber != 0 && connection.canvasTurnNumber == events->turn();
    if (args.integer(0) != -1) {
        if (holdsTurn) {
            events->end();
        }
        return Reply::Integer(0);
    }
    if (!holdsTurn) {
        const auto notify = connection.notify;
        connection.canvasTurn =
            events->listen([notify](const std::string& event, const CanvasPointer& pointer) {
                if (notify) {
                    notify(PackEvent(event, pointer));
                }
            });
        connection.canvasTurnNumber = events->turn();
    }
    return Reply::Integer(-1);
}

}  // namespace

std::vector<MethodSpec> EventMethods() {
    return {
        {"Wib_ListenEvents",
         kFamily,
         {{"flag", ArgType::Flag}},
         {ResultType::Flag, "-1 while the plug-in listens, 0 when it does not"},
         "With -1 the canvas sends this plug-in its pointer input instead of painting: "
         "notifications WibMouseDown, WibMouseMove and WibMouseUp with [button, shift, x, y, "
         "pressure] (button 1 left, 2 right; shift 1 Shift + 2 Ctrl + 4 Alt; x and y in image "
         "pixels; pressure 0..1). WibEnd (no values) ends the turn: the user pressed Esc or "
         "chose a tool, another plug-in began to listen, or the plug-in called this with 0. "
         "A plug-in that disconnects gives the canvas back at once.",
         ListenEvents},
    };
}

}  // namespace wib
