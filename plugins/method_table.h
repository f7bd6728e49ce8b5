// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/observer_list.h"
#include "pixel/colour_adjust.h"
#include "plugins/automation_host.h"
#include "plugins/call_args.h"
#include "plugins/free_form_path.h"
#include "plugins/reply.h"

namespace wib {

inline constexpr const char* kDefaultStatusCaption = "Processing...";

// What the server remembers for all plug-ins together.
struct ServerState {
    std::string token;
    // The caption Wib_StatusOpen uses when it is given none.
    std::string statusCaption = kDefaultStatusCaption;
    // The look-up tables Wib_Gamma and Wib_Contrast build up and
    // Wib_SetLutImage applies, and whether that gives grey.
    ChannelLuts luts{IdentityLut(), IdentityLut(), IdentityLut()};
    bool greyLuts = false;
    // Where Wib_NewBrushFilename names brush images; empty: the temporary folder.
    std::string brushSetFolder;
    // The integer array GS_SetTempArray leaves for the next plug-in.
    IntegerList tempArray;
};

// What one connection holds, so that it can be given back if the plug-in dies.
struct ConnectionState {
    bool interfaceLocked = false;
    bool bufferLocked = false;
    bool statusOpen = false;
    // Sends a notification to the plug-in; set by the server.
    std::function<void(const msgpack::sbuffer&)> notify;
    // The canvas's turn while the plug-in listens for its events, and which
    // turn it was; dropping the subscription gives the canvas back.
    Subscription canvasTurn;
    int canvasTurnNumber = 0;
    // The canvas's pointer before Wib_ChangePointer, until Wib_RestorePointer.
    std::optional<int> pointerBefore;
    // The free-form paths the plug-in is building, by handle.
    std::map<int, FreeFormPath> freeForms;
    int nextFreeForm = 1;
    // The system id of the plug-in's own graphics window (GS_SetHwnd), 0 for none.
    long long graphicsWindow = 0;
};

struct CallContext {
    AutomationHost& host;
    ServerState& server;
    ConnectionState& connection;

    Workspace& workspace() { return host.workspace; }
    Document& document() { return host.workspace.document; }
};

using MethodHandler = std::function<Reply(CallContext&, CallArgs&)>;

// What an answer holds, as the generated clients type it.
enum class ResultType {
    Nothing,
    Integer,
    Number,
    Text,
    Flag,        // -1 or 0
    Plane,       // [ubX, ubY, bin]
    BrushPlane,  // a plane, or -1 while no custom brush is active
    Bounds,      // [left, top, right, bottom]
    Rgb,         // [red, green, blue]
    Commands,    // the command list
    Value,       // an integer, number or text
    Integers,    // an array of integers
    Params,      // a map of names to integers, numbers, text or integer arrays
};

struct MethodResult {
    ResultType type;
    const char* text;  // what the answer is, in words
};

// One method of the automation object: dispatch, Wib_ListCommands' neighbours
// and the method reference are all read from these.
struct MethodSpec {
    std::string name;  // spelt exactly as plug-ins call it
    std::string family;
    std::vector<ArgSpec> args;
    MethodResult result;
    std::string summary;  // one line
    MethodHandler handler;
};

// Every method, family by family, in the order the reference lists them.
const std::vector<MethodSpec>& MethodTable();

// Nothing when no method has that name.
const MethodSpec* FindMethod(std::string_view name);

}  // namespace wib
