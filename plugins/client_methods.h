// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// The method lists of the client libraries in plugins/sdk/, written from the
// method table so that the clients cannot drift from the program: a typed
// member function per method for C++ (wibbleton_methods.h) and a method with
// named arguments per method for Python (wibbleton_methods.py).
std::string CppClientMethods();
std::string PythonClientMethods();

}  // namespace wib
