// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the real program in headless mode and reads what it says.
#include <gtest/gtest.h>

#include <signal.h>

#include <QProcess>
#include <QTemporaryDir>

namespace {

class HeadlessRun : public ::testing::Test {
  protected:
    void start(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // Settings and user files of this run stay in a folder of its own.
        environment.insert("HOME", home.path());
        environment.insert("XDG_CONFIG_HOME", home.path() + "/config");
        environment.insert("XDG_DATA_HOME", home.path() + "/data");
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::SeparateChannels);
        program.setReadChannel(QProcess::StandardError);
        program.start(WIB_PROGRAM, arguments);
        ASSERT_TRUE(program.waitForStarted(10000));
    }
    // Standard error up to and including the line `last`.
    QStringList readUntil(const QString& last) {
        QStringList lines;
        QByteArray pending;
        while (!lines.contains(last) && program.waitForReadyRead(20000)) {
            pending += program.readAllStandardError();
            while (pending.contains('\n')) {
                const int end = pending.indexOf('\n');
                lines << QString::fromUtf8(pending.left(end));
                pending.remove(0, end + 1);
            }
        }
        return lines;
    }
    QTemporaryDir home;
    QProcess program;
};

TEST_F(HeadlessRun, StartsUpInOrderAndShutsDownCleanlyOnSigterm) {
    start({"--headless", "-nogpu", "--listen", "wib-headless-test", "--token", "T"});
    const QStringList lines = readUntil("Done initializing.");
    const QStringList order{"Using color set Default",
                            "gdi plus started",
                            "Parsing command line...",
                            "GPU initialization was cancelled via command line argument.",
                            "Decimal separator is comma = False",
                            "Current UAC setting is -1",
                            "Is run as administrator = ",
                            "Number of processors ",
                            "DPI scale factor is ",
                            "Virtual monitor size... left ",
                            "Threads = ",
                            "loading calibration settings",
                            "Opening main form.",
                            "Done initializing."};
    int at = -1;
    for (const QString& step : order) {
        int found = -1;
        for (int i = at + 1; i < lines.size(); ++i) {
            if (lines[i].startsWith(step)) {
                found = i;
                break;
            }
        }
        ASSERT_GT(found, at) << step.toStdString() << " missing or out of order";
        at = found;
    }

    ::kill(static_cast<pid_t>(program.processId()), SIGTERM);
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(QFile::exists(home.path() + "/data/Wibbleton/Wibbleton/Mruds.txt"))
        << "the shut-down operations ran";
}

TEST_F(HeadlessRun, BadArgumentsAreRefusedWithUsage) {
    start({"--answer", "sometimes"});
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitCode(), 2);
    EXPECT_TRUE(program.readAllStandardError().contains("usage: wibbleton"));
}

}  // namespace
