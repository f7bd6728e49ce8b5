// SPDX-License-Identifier: GPL-3.0-or-later
// main() of the Qt test programs: one QApplication on the offscreen platform
// for all tests, settings kept apart from the user's.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    QApplication::setOrganizationName("WibbletonTests");
    QApplication::setApplicationName("WibbletonTests");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
