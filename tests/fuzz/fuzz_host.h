// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/test_host.h"

namespace wib::fuzz {

// One workspace for every input, with the smallest undo budget.
inline testing::TestHost& Host() {
    static testing::TestHost* host = [] {
        auto* made = new testing::TestHost();
        made->setUndoBudget(1);
        made->newDocument(8, 8);
        return made;
    }();
    return *host;
}

// Images up to a million pixels: larger ones are valid but only cost the
// fuzzer memory and time.
inline bool SmallEnough(long long width, long long height) {
    return width * height <= (1LL << 20);
}

}  // namespace wib::fuzz
