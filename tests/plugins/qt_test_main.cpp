// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-in tests need a QCoreApplication for their sockets' events.

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
