// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace wib {

class Workspace;

inline constexpr std::chrono::milliseconds kConversionPoll{10};
inline constexpr std::chrono::milliseconds kConversionTimeOut{4500};
inline constexpr std::chrono::milliseconds kSettlePoll{20};
inline constexpr std::chrono::milliseconds kSettleTime{330};

// Waits for the converter: looks at `finished` every 10 ms, letting the
// interface run in between, with the progress bar at elapsed seconds x 100 /
// 4.5. After 4.5 s it asks "Timed out waiting for conversion service" with
// Retry, which waits 4.5 s more (as often as asked), and Cancel, which gives
// up and returns false. A termination signal (the workspace's quitPending)
// gives up too, at the next look.
bool WaitForConversion(Workspace& workspace, const std::function<bool()>& finished);

// Waits, looking every 20 ms, until 0.33 s have passed since `since`, so that
// the converter can finish writing a file that has just appeared.
void SettleAfterConversion(Workspace& workspace, std::chrono::nanoseconds since);

}  // namespace wib
