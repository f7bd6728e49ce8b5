// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace wib {

// Whether the bytes are well-formed UTF-8: no stray continuation bytes, no
// overlong forms, no surrogates, nothing above U+10FFFF.
bool IsValidUtf8(const char* text, std::size_t size);

}  // namespace wib
