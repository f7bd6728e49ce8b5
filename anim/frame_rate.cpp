// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_rate.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/host/preferences.h"
#include "pixel/rounding.h"

namespace wib {

double FrameRateFromText(const std::string& text) {
    const char* first = text.data();
    const char* last = text.data() + text.size();
    while (first != last && (*first == ' ' || *first == '\t')) {
        ++first;
    }
    if (first != last && *first == '+') {
        ++first;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(first, last, value, std::chars_format::general);
    if (error != std::errc() || end == first || !std::isfinite(value)) {
        return 0;
    }
    return value;
}

std::int32_t FrameDelayFromRate(double rate) {
    const double counted = std::isfinite(rate) && rate > 1 ? rate : 1;
    const double delay = std::floor(1000.0 / counted);
    return delay < 1 ? 1 : static_cast<std::int32_t>(delay);
}

std::int32_t FrameRateFieldValue(const std::string& text) {
    const double value = RoundHalfEvenValue(FrameRateFromText(text));
    constexpr double kLimit = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, -kLimit, kLimit));
}

std::string FrameRateText(double rate) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, rate);
    return error == std::errc() ? std::string(buffer, end) : kFallbackFrameRate;
}

std::string DefaultFrameRateText(const Preferences& preferences) {
    const auto stored = preferences.value("Settings", "DefaultFrameRate");
    return stored && FrameRateFromText(*stored) > 0 ? *stored : kFallbackFrameRate;
}

}  // namespace wib
