// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the method list of a client library: `cpp` for
// plugins/sdk/cpp/wibbleton_methods.h, `python` for
// plugins/sdk/python/wibbleton_methods.py.

#include <iostream>
#include <string_view>

#include "plugins/client_methods.h"

int main(int argc, char** argv) {
    const std::string_view language = argc == 2 ? argv[1] : "";
    if (language == "cpp") {
        std::cout << wib::CppClientMethods();
    } else if (language == "python") {
        std::cout << wib::PythonClientMethods();
    } else {
        std::cerr << "usage: wib_client_methods cpp|python\n";
        return 2;
    }
    return std::cout.good() ? 0 : 1;
}
