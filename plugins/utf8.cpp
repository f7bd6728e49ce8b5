// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/utf8.h"

#include <cstdint>

namespace wib {

bool IsValidUtf8(const char* text, std::size_t size) {
    const auto* s = reinterpret_cast<const std::uint8_t*>(text);
    std::size_t i = 0;
    while (i < size) {
        const std::uint8_t lead = s[i];
        std::size_t extra = 0;
        std::uint32_t code = 0;
        std::uint32_t lowest = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xe0) == 0xc0) {
            extra = 1, code = lead & 0x1f, lowest = 0x80;
        } else if ((lead & 0xf0) == 0xe0) {
            extra = 2, code = lead & 0x0f, lowest = 0x800;
        } else if ((lead & 0xf8) == 0xf0) {
            extra = 3, code = lead & 0x07, lowest = 0x10000;
        } else {
            return false;
        }
        if (size - i <= extra) {
            return false;
        }
        for (std::size_t k = 1; k <= extra; ++k) {
            if ((s[i + k] & 0xc0) != 0x80) {
                return false;
            }
            code = (code << 6) | (s[i + k] & 0x3f);
        }
        if (code < lowest || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff)) {
            return false;
        }
        i += extra + 1;
    }
    return true;
}

}  // namespace wib
