// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the plug-in method reference; docs/automation.md is its output.

#include <iostream>

#include "plugins/method_reference.h"

int main() {
    std::cout << wib::AutomationReference();
    return std::cout.good() ? 0 : 1;
}
