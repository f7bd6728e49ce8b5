#pragma once

#include <chrono>
#include <cstdint>

namespace wib {

class Clock;

// Waits, without sleeping, until strictly more than `delayMs` milliseconds
// have passed on `clock` since `start`; with a delay of 0, until the clock has
// moved on at all.
void WaitPastDelay(const Clock& clock, std::chrono::nanoseconds start, std::int32_t delayMs);

}  // namespace wib
