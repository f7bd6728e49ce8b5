#pragma once

#include <cstdint>
#include <string>

namespace wib {

class Preferences;

inline constexpr const char* kFallbackFrameRate = "24";

// The number a frame-rate field holds: its leading number, as typed; 0 when
// it starts with none.
double FrameRateFromText(const std::string& text);

// Milliseconds between two shown frames: 1000 / rate rounded down, a rate of 1
// or less counting as 1, and never below 1 (24 fps give 41 ms, 30 give 33).
std::int32_t FrameDelayFromRate(double rate);

// The field's value as an integer, halves rounded to the even neighbour.
std::int32_t FrameRateFieldValue(const std::string& text);

// A rate written as the field shows it: "24", "29.97".
std::string FrameRateText(double rate);

// The preference "DefaultFrameRate" of section "Settings" when it holds a
// rate above 0, else "24".
std::string DefaultFrameRateText(const Preferences& preferences);

}  // namespace wib
