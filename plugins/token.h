#pragma once

#include <string>

namespace wib {

// Compares a presented token with the real one in time that does not depend
// on where they first differ.
bool TokenMatches(const std::string& presented, const std::string& expected);

}  // namespace wib
