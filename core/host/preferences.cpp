// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/host/preferences.h"

#include <charconv>

namespace wib {

long long Preferences::integer(const std::string& section, const std::string& key,
                               long long fallback) const {
    const auto text = value(section, key);
    if (!text) {
        return fallback;
    }
    long long parsed = 0;
    const char* first = text->data();
    const char* last = first + text->size();
    while (first != last && *first == ' ') {
        ++first;
    }
    const auto [end, error] = std::from_chars(first, last, parsed);
    if (error != std::errc() || end == first) {
        return fallback;
    }
    return parsed;
}

}  // namespace wib
