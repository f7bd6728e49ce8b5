// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <thread>

namespace wib {

// A monotonic time source: the steady clock in the program, a hand-driven
// one in tests.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual std::chrono::nanoseconds now() const = 0;
    // Waits `duration`; a hand-driven clock moves on by it instead, so that
    // polling loops run in no time under test.
    virtual void sleepFor(std::chrono::nanoseconds duration) {
        std::this_thread::sleep_for(duration);
    }
};

}  // namespace wib
