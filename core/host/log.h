// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// The program's message log: start-up steps, plug-in errors, notices. The
// log window shows it; standard error gets a copy.
class Log {
  public:
    virtual ~Log() = default;
    virtual void line(const std::string& text) = 0;
};

}  // namespace wib
