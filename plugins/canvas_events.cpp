// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/canvas_events.h"

#include <utility>

namespace wib {

Subscription CanvasEvents::listen(CanvasEventSink sink) {
    end();
    sink_ = std::move(sink);
    const int turn = ++turn_;
    changed.notify();
    return Subscription([this, turn] { release(turn); });
}

void CanvasEvents::send(const std::string& event, const CanvasPointer& pointer) {
    if (sink_) {
        sink_(event, pointer);
    }
}

void CanvasEvents::end() {
    if (!sink_) {
        return;
    }
    const CanvasEventSink sink = std::exchange(sink_, nullptr);
    sink("WibEnd", {});
    changed.notify();
}

void CanvasEvents::release(int turn) {
    if (turn == turn_ && sink_) {
        sink_ = nullptr;
        changed.notify();
    }
}

}  // namespace wib
