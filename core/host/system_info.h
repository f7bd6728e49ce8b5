// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// Facts about the machine that sizing decisions depend on.
class SystemInfo {
  public:
    virtual ~SystemInfo() = default;
    virtual int processorCount() const = 0;
    // Memory the program can still take without pushing the machine into
    // swapping or the out-of-memory killer.
    virtual std::uint64_t availableMemoryBytes() const = 0;
};

}  // namespace wib
