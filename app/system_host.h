// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/host/clock.h"
#include "core/host/system_info.h"

namespace wib {

class SteadyClock : public Clock {
  public:
    std::chrono::nanoseconds now() const override;
};

// Processor count and available memory as the operating system reports them.
class MachineInfo : public SystemInfo {
  public:
    int processorCount() const override;
    std::uint64_t availableMemoryBytes() const override;
};

}  // namespace wib
