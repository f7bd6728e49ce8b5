// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

namespace wib::testing {

// Runs `work` in a child process whose files may grow to `bytes` at most, as
// `ulimit -f` sets it, with SIGXFSZ ignored as the program ignores it; the
// child's exit status is what `work` returns (-1 when it did not exit).
int RunWithFileSizeLimit(std::uint64_t bytes, const std::function<int()>& work);

}  // namespace wib::testing
