// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "core/observer_list.h"

namespace wib {

// One pointer event on the canvas as a listening plug-in gets it: the button
// (1 left, 2 right, 0 other), the shift state (1 Shift, 2 Ctrl, 4 Alt, added),
// the position in image pixels and the pen's pressure (1 for a mouse).
struct CanvasPointer {
    int button = 0;
    int shift = 0;
    int x = 0;
    int y = 0;
    double pressure = 1.0;
};

// What a listener is sent: WibMouseDown, WibMouseMove, WibMouseUp with the
// pointer, WibEnd with nothing.
using CanvasEventSink = std::function<void(const std::string& event, const CanvasPointer&)>;

// The canvas's turn given to one plug-in: while a listener is set, the
// canvas's pointer input goes to it instead of the tools. A new listener takes
// the turn from the one before, which is told WibEnd.
class CanvasEvents {
  public:
    // Gives the turn to `sink`; the Subscription gives it back when dropped
    // (the plug-in's connection closed), without telling it anything.
    [[nodiscard]] Subscription listen(CanvasEventSink sink);
    bool listening() const { return static_cast<bool>(sink_); }
    // The number of the turn in progress, 0 when nobody listens.
    int turn() const { return sink_ ? turn_ : 0; }

    void mouseDown(const CanvasPointer& pointer) { send("WibMouseDown", pointer); }
    void mouseMove(const CanvasPointer& pointer) { send("WibMouseMove", pointer); }
    void mouseUp(const CanvasPointer& pointer) { send("WibMouseUp", pointer); }
    // Ends the listener's turn (Esc, another tool, its own call): it is told
    // WibEnd and the canvas paints again.
    void end();

    // Told when the turn is given or taken back.
    ObserverList<> changed;

  private:
    void send(const std::string& event, const CanvasPointer& pointer);
    void release(int turn);

    CanvasEventSink sink_;
    int turn_ = 0;  // counts turns, so that an old turn's Subscription gives nothing back
};

}  // namespace wib
