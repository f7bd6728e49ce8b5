#include "plugins/token.h"

namespace wib {

bool TokenMatches(const std::string& presented, const std::string& expected) {
    if (expected.empty()) {
        return false;
    }
    unsigned difference = presented.size() == expected.size() ? 0 : 1;
    for (std::size_t i = 0; i < presented.size(); ++i) {
        difference |= static_cast<unsigned char>(presented[i]) ^
                      static_cast<unsigned char>(expected[i % expected.size()]);
    }
    return difference == 0;
}

}  // namespace wib
