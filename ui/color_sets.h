// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// Applies one of the interface colour sets ("Default", "Dark", "Light") to
// the whole program and returns the name of the set in force; an unknown
// name gives "Default".
std::string ApplyColorSet(const std::string& name);

}  // namespace wib
