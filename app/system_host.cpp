// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/system_host.h"

#include <unistd.h>

#include <fstream>
#include <string>
#include <thread>

namespace wib {

std::chrono::nanoseconds SteadyClock::now() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

int MachineInfo::processorCount() const {
    return std::max(1u, std::thread::hardware_concurrency());
}

std::uint64_t MachineInfo::availableMemoryBytes() const {
    // MemAvailable counts the page cache the kernel can give back; it is what
    // a new allocation can really have without swapping.
    std::ifstream meminfo("/proc/meminfo");
    std::string name;
    std::uint64_t kilobytes = 0;
    std::string unit;
    while (meminfo >> name >> kilobytes >> unit) {
        if (name == "MemAvailable:") {
            return kilobytes * 1024;
        }
    }
    const long pages = sysconf(_SC_AVPHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0 ? static_cast<std::uint64_t>(pages) * pageSize : 0;
}

}  // namespace wib
