#pragma once

#include <chrono>

namespace wib {

// A monotonic time source: the steady clock in the program, a hand-driven
// one in tests.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual std::chrono::nanoseconds now() const = 0;
};

}  // namespace wib
