// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace wib {

// What a reader of a whole file gives back: the value read, or nothing and
// the message that says why, for the caller to show while it keeps what it
// had.
template <typename T>
struct ReadResult {
    std::optional<T> value;
    std::string message;

    static ReadResult Failed(std::string why) { return {std::nullopt, std::move(why)}; }
    explicit operator bool() const { return value.has_value(); }
};

}  // namespace wib
