// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>

namespace wib {

// Compares a presented token with the real one in time that does not depend
// on where they first differ.
bool TokenMatches(const std::string& presented, const std::string& expected);

// A fresh token for a run of the program: 128 random bits from the system's
// source, as hexadecimal text.
QString NewAutomationToken();

}  // namespace wib
