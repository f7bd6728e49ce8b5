// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/token.h"

#include <QRandomGenerator>

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

QString NewAutomationToken() {
    QString token;
    for (int i = 0; i < 2; ++i) {
        token += QStringLiteral("%1").arg(QRandomGenerator::system()->generate64(), 16, 16,
                                          QLatin1Char('0'));
    }
    return token;
}

}  // namespace wib
