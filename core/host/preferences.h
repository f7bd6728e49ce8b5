// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace wib {

// The per-user preference store: named keys in sections ("Settings",
// "Tablet", "Sidebar"). Values are kept as text, as the store holds them.
class Preferences {
  public:
    virtual ~Preferences() = default;

    virtual std::optional<std::string> value(const std::string& section,
                                             const std::string& key) const = 0;
    virtual void setValue(const std::string& section, const std::string& key,
                          const std::string& value) = 0;

    // The key read as an integer; `fallback` when it is missing or not a number.
    long long integer(const std::string& section, const std::string& key, long long fallback) const;
};

}  // namespace wib
