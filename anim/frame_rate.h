// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "core/observer_list.h"

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

// The frame-rate field: its text as typed, and the delay between frames its
// change handler computes whenever the text is set.
class FrameRateField {
  public:
    const std::string& text() const { return text_; }
    void setText(const std::string& text) {
        text_ = text;
        delayMs_ = FrameDelayFromRate(FrameRateFromText(text));
        changed.notify();
    }
    std::int32_t delayMs() const { return delayMs_; }
    // Whole frames a second, halves to the even neighbour.
    std::int32_t rate() const { return FrameRateFieldValue(text_); }
    void setRate(double rate) { setText(FrameRateText(rate)); }
    // Told after every change, so the controls show the field again.
    ObserverList<> changed;

  private:
    std::string text_;
    std::int32_t delayMs_ = 0;
};

// The preference "DefaultFrameRate" of section "Settings" when it holds a
// rate above 0, else "24".
std::string DefaultFrameRateText(const Preferences& preferences);

}  // namespace wib
